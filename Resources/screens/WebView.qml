import QtQuick
import QtWebEngine
import Veltramoor
import VeltramoorWeb

// A web page. No other file needs the web engine, so that it is loaded when the first page is shown.
WebEngineView {
    id: view
    objectName: "webView"

    required property WebPage page
    property WebProfile browser: WebProfiles.profile(page.userAgent, page.profileKey, WebCookies)

    profile: browser.engine
    anchors.fill: parent
    backgroundColor: "white"
    focus: true

    Accessible.role: Accessible.WebDocument
    Accessible.name: title

    settings {
        javascriptCanOpenWindows: false
        javascriptCanAccessClipboard: false
        javascriptCanPaste: false
        localContentCanAccessFileUrls: false
        localContentCanAccessRemoteUrls: false
        allowRunningInsecureContent: false
        allowGeolocationOnInsecureOrigins: false
        allowWindowActivationFromJavaScript: false
        unknownUrlSchemePolicy: WebEngineSettings.DisallowUnknownUrlSchemes
        pluginsEnabled: false
        pdfViewerEnabled: false
        screenCaptureEnabled: false
        fullScreenSupportEnabled: false
        hyperlinkAuditingEnabled: false
        dnsPrefetchEnabled: false
        navigateOnDropEnabled: false
        autoLoadIconsForPage: false
        errorPageEnabled: false
        focusOnNavigationEnabled: false
        playbackRequiresUserGesture: true
        showScrollBars: false
    }

    // What is to be loaded once the engine has the application's cookies.
    property var pending: null
    // Whether the page being loaded is text of the application's, which has no place in the history.
    property bool ownPage: false
    // Whether the engine is yet to say that it stopped a load as the application asked.
    property bool stopping: false

    function prepare(load: var): void {
        pending = load
        browser.pushCookies()
    }
    // Has a link that the person taps open here when it asks for a window of its own, by its target
    // or by the button or key that it is tapped with; in a world that no script of a page reaches.
    readonly property string tapWatch: `
        for (const type of ['click', 'auxclick'])
            addEventListener(type, event => {
                const link = event.composedPath().find(node => node.localName === 'a' && node.href);
                if (!event.isTrusted || event.button > 1 || !link)
                    return;
                const base = document.querySelector('base[target]');
                const target = link.target || (base ? base.target : '');
                const frame = document.querySelector('iframe[name="' + CSS.escape(target) + '"]');
                const own = link.getAttribute('target');
                if (!frame)
                    link.target = '_self';
                setTimeout(() => own === null ? link.removeAttribute('target') : link.target = own);
                if (event.button === 1 || event.ctrlKey || event.shiftKey || event.metaKey) {
                    event.preventDefault();
                    link.click();
                }
            }, true);`

    function reportHistory(): void {
        page.reportHistory(history.backItems.rowCount() > 1, canGoForward)
    }

    // Kept, for the page may be gone before its view is; what the engine says in between is for nobody.
    property string pageId

    Component.onCompleted: {
        pageId = page.pageId
        browser = browser  // For good.
        // The engine does not tell QML's tools of this property's type.
        // qmllint disable type
        userScripts.collection = [{
            name: "taps",
            injectionPoint: WebEngineScript.DocumentCreation,
            worldId: WebEngineScript.ApplicationWorld,
            sourceCode: tapWatch
        }]
        // qmllint enable type
        page.attach()
    }
    Component.onDestruction: browser.forgetPage(pageId)

    Connections {
        target: view.browser
        function onCookiesReady(): void {
            const load = view.pending
            view.pending = null
            if (load)
                load()
        }
    }

    Connections {
        target: view.page
        function onHtmlRequested(html: string, base: url): void {
            view.prepare(() => {
                view.ownPage = true
                view.loadHtml(view.browser.shortPageFor(view.pageId, html, base), base)
            })
        }
        function onUrlRequested(url: url): void { view.prepare(() => view.url = url) }
        function onStopRequested(): void {
            view.pending = null
            view.stopping = view.loading
            view.stop()
        }
        function onBackRequested(): void { view.goBack() }
        function onForwardRequested(): void { view.goForward() }
        function onScriptRequested(number: int, source: string): void {
            view.runJavaScript(source, value => {
                if (view.page)
                    view.page.reportScriptResult(number, value)
            })
        }
    }

    onNavigationRequested: request => {
        const main = request.isMainFrame
        if (!page || !page.shouldStartLoad(request.url, request.navigationType, main)) {
            request.reject()
            return
        }
        if (main && request.url.toString().startsWith("http")) {
            ownPage = false
            browser.pushCookies()
        }
        request.accept()
    }

    onLoadingChanged: info => {
        if (!page)
            return
        switch (info.status) {
        case WebEngineView.LoadStartedStatus:
            zoomFactor = 1
            stopping = false
            page.reportStarted()
            break
        case WebEngineView.LoadSucceededStatus:
            finished()
            break
        case WebEngineView.LoadFailedStatus:
            // A page that a server sends with an error status is a page all the same.
            if (info.errorDomain === WebEngineLoadingInfo.HttpStatusCodeDomain)
                finished()
            else
                failed(info)
            break
        case WebEngineView.LoadStoppedStatus:
            // What the application stopped is over for it, and another load may be on its way.
            if (!stopping)
                page.reportFailed(info.url, "")
            stopping = false
            break
        }
    }

    // The engine's own words hold markup and advice for a browser.
    function reason(info: var): string {
        switch (info.errorDomain) {
        case WebEngineLoadingInfo.DnsErrorDomain: return qsTr("the host is unknown")
        case WebEngineLoadingInfo.CertificateErrorDomain: return qsTr("its certificate is not trusted")
        case WebEngineLoadingInfo.ConnectionErrorDomain: return qsTr("the server could not be reached")
        default: return qsTr("error %1").arg(Math.abs(info.errorCode))
        }
    }

    // A load that broke off midway has taken the place of the page before it, and has its address. So
    // has a page's link to itself, which is taken for the same: the way back then skips that page.
    function failed(info: var): void {
        if (info.url.toString() === url.toString()) {
            page.reportReplaced()
            reportHistory()
        }
        page.reportFailed(info.url, reason(info))
    }

    function finished(): void {
        if (ownPage)
            history.clear()
        reportHistory()
        fit()
        page.reportFinished()
    }

    // A page wider than the view is drawn smaller, down to a size at which it can still be read.
    function fit(): void {
        if (!page || !page.scalesPageToFit)
            return
        runJavaScript("document.documentElement.scrollWidth / document.documentElement.clientWidth",
                      ratio => {
            if (ratio > 1.02)
                view.zoomFactor = Math.max(0.5, view.zoomFactor / ratio)
        })
    }

    onWidthChanged: {
        zoomFactor = 1
        refit.restart()
    }

    Timer {
        id: refit
        interval: 100
        onTriggered: view.fit()
    }

    // A tapped link opens here (see tapWatch). What a script opens, during a tap too, is nothing that
    // the person asked for, and links in frames are mostly advertising: a request that nobody takes
    // comes to nothing.

    onFeaturePermissionRequested: (origin, feature) => grantFeaturePermission(origin, feature, false)
    onAuthenticationDialogRequested: request => {
        request.accepted = true
        const login = page && request.type === AuthenticationDialogRequest.AuthenticationTypeHTTP
                      ? page.answerChallenge(request.url) : []
        if (login.length === 2)
            request.dialogAccept(login[0], login[1])
        else
            request.dialogReject()
    }
    onJavaScriptDialogRequested: request => {
        request.accepted = true
        request.dialogReject()
    }
    onFileDialogRequested: request => {
        request.accepted = true
        request.dialogReject()
    }
    onColorDialogRequested: request => {
        request.accepted = true
        request.dialogReject()
    }
    // What a page says to its developers is nobody's business here.
    onJavaScriptConsoleMessage: {}
    onContextMenuRequested: request => request.accepted = true
    onTooltipRequested: request => request.accepted = true
    onTouchSelectionMenuRequested: request => request.accepted = true
    onCertificateError: error => error.rejectCertificate()
    onSelectClientCertificate: selection => selection.selectNone()
    onRegisterProtocolHandlerRequested: request => request.reject()
    onQuotaRequested: request => request.reject()
    onFullScreenRequested: request => request.reject()
    onRenderProcessTerminated: (status, code) => {
        if (page && status !== WebEngineView.NormalTerminationStatus) {
            page.reportReplaced()
            page.reportStarted()
            page.reportFailed(view.url, qsTr("it ended unexpectedly"))
        }
    }

    Connections {
        target: view.browser.engine
        function onDownloadRequested(download: var): void { download.cancel() }
    }
}
