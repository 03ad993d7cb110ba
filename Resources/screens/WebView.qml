import QtQuick
import QtWebEngine
import Veltramoor
import VeltramoorWeb

// A web page. No other file needs the web engine, so that it is loaded when the first page is shown.
WebEngineView {
    id: view
    objectName: "webView"

    required property WebPage page
    property WebProfile browser: WebProfiles.profile(page.userAgent, page.profileKey, WebCookies, WebHosts)

    profile: browser.engine
    anchors.fill: parent
    // Dark until there is something to see. Then white, which is what a page without a ground of its own
    // is written for.
    backgroundColor: Theme.ground
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
        webRTCPublicInterfacesOnly: true
        showScrollBars: false
    }

    // What is to be loaded once the engine has the application's cookies.
    property var pending: null
    // Whether the page being loaded is text of the application's, which has no place in the history.
    property bool ownPage: false
    // Whether the engine has still to speak of a load that was stopped. It may do so a while later, and
    // does not say which one it means: until then nothing else is loaded, and what it says is not heard.
    property bool stopping: false
    property bool heard: false
    property bool cookiesReady: false

    function prepare(load: var): void {
        pending = load
        cookiesReady = false
        browser.pushCookies()
    }
    function proceed(): void {
        if (stopping || !cookiesReady || !pending)
            return
        const load = pending
        pending = null
        load()
    }
    function stopped(): void {
        stopping = false
        if (!pending && loading && page)
            page.reportStarted()  // The page has gone on to another one meanwhile.
        proceed()
    }

    // Says when a new document takes the place of the one before, and when there is something to see of
    // it. Has a link that the person taps open here when it asks for a window of its own, by its target
    // or by the button or key that it is tapped with; tells of a magnet link, which leads no page
    // anywhere. All of it in a world that no script of a page reaches.
    readonly property string script: `
        const say = what => console.info(messageKey + what);
        say('began');
        new PerformanceObserver((list, observer) => {
            if (list.getEntriesByName('first-contentful-paint').length > 0) {
                observer.disconnect();
                say('painted');
            }
        }).observe({ type: 'paint', buffered: true });
        // A script can have the engine click for it, through a label or a form: only what begins with
        // the person's finger or key on the link itself is a tap on it.
        const linkOf = event => event.composedPath().find(node => node.localName === 'a' && node.href);
        let pressed = null;
        addEventListener('pointerdown', event => pressed = event.isTrusted ? linkOf(event) : null, true);
        addEventListener('keydown', event => {
            const key = event.isTrusted && event.key === 'Enter' && document.activeElement;
            pressed = key && key.localName === 'a' ? key : null;
        }, true);
        for (const type of ['pointerup', 'pointercancel', 'keyup'])
            addEventListener(type, () => setTimeout(() => pressed = null), true);
        for (const type of ['click', 'auxclick'])
            addEventListener(type, event => {
                const link = linkOf(event);
                if (!event.isTrusted || event.button > 1 || !link)
                    return;
                if (link.protocol === 'magnet:') {
                    event.preventDefault();
                    if (link === pressed)
                        say(link.href);
                    pressed = null;
                    return;
                }
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
            name: "own",
            injectionPoint: WebEngineScript.DocumentCreation,
            worldId: WebEngineScript.ApplicationWorld,
            sourceCode: "{ const messageKey = '" + page.messageKey + "';" + script + "}"
        }, {
            // What opens connections that nobody here is asked about.
            name: "reach",
            injectionPoint: WebEngineScript.DocumentCreation,
            worldId: WebEngineScript.MainWorld,
            runsOnSubFrames: true,
            sourceCode: "for (const name of ['RTCPeerConnection', 'webkitRTCPeerConnection', "
                        + "'WebTransport']) delete globalThis[name]"
        }]
        // qmllint enable type
        page.attach()
    }
    Component.onDestruction: browser.forgetPage(pageId)

    Connections {
        target: view.browser
        function onCookiesReady(): void {
            view.cookiesReady = true
            view.proceed()
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
            if (view.deciding)
                Qt.callLater(view.stopLate) // qmllint disable
            else
                view.stop()
            view.stopping = true
            view.heard = false
        }
        function onStopHandled(): void {
            view.heard = true
            if (view.stopping && !view.loading)
                view.stopped()
        }
        function onStopOverdue(): void {
            if (view.stopping)
                view.stopped()
        }
        function onReloadRequested(): void { view.prepare(() => view.url = view.url) }
        function onBackRequested(): void { view.goBack() }
        function onForwardRequested(): void { view.goForward() }
        function onScriptRequested(number: int, source: string): void {
            view.runJavaScript(source, value => {
                if (view.page)
                    view.page.reportScriptResult(number, value)
            })
        }
    }

    // Whether the load under way led to where no page of this profile may go.
    property bool refused: false

    // While the engine asks whether it may go somewhere it must not be stopped: newer ones end the
    // program then.
    property bool deciding: false
    function stopLate(): void {
        if (stopping)
            stop()
    }

    onNavigationRequested: request => {
        const main = request.isMainFrame
        deciding = true
        const wanted = page && page.shouldStartLoad(request.url, request.navigationType, main)
        deciding = false
        if (!wanted) {
            request.reject()
            return
        }
        if (!browser.mayReach(request.url)) {
            refused = refused || main
            request.reject()
            return
        }
        if (main)
            refused = false
        if (main && request.url.toString().startsWith("http")) {
            ownPage = false
            browser.pushCookies()
        }
        request.accept()
    }

    onLoadingChanged: info => {
        if (!page)
            return
        if (stopping) {
            // One that was still at work has ended now.
            if (info.status !== WebEngineView.LoadStartedStatus && heard && !loading)
                stopped()
            return
        }
        switch (info.status) {
        case WebEngineView.LoadStartedStatus:
            page.reportStarted()
            break
        case WebEngineView.LoadSucceededStatus:
            refused = false
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
            page.reportFailed(info.url, refused ? qsTr("no page here may lead into the network around you")
                                                : "")
            refused = false
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
        backgroundColor = "white"
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
    // What a page says to its developers is nobody's business here; what the view's own script says is.
    onJavaScriptConsoleMessage: (level, message, line, source) => {
        if (!page || !message.startsWith(page.messageKey))
            return
        const said = message.slice(page.messageKey.length)
        if (said === "began") {
            backgroundColor = Theme.ground
            zoomFactor = 1
        } else if (said === "painted") {
            backgroundColor = "white"
        } else if (said.startsWith("magnet:")) {
            page.reportTappedMagnetLink(said)
        }
    }
    onContextMenuRequested: request => request.accepted = true
    onTooltipRequested: request => request.accepted = true
    onTouchSelectionMenuRequested: request => request.accepted = true
    onCertificateError: error => error.rejectCertificate()
    onSelectClientCertificate: selection => selection.selectNone()
    onRegisterProtocolHandlerRequested: request => request.reject()
    onQuotaRequested: request => request.reject()
    onFullScreenRequested: request => request.reject()
    onRenderProcessTerminated: (status, code) => {
        if (page && status !== WebEngineView.NormalTerminationStatus)
            page.reportGone(view.url, qsTr("it ended unexpectedly"))
    }

    Connections {
        target: view.browser.engine
        function onDownloadRequested(download: var): void { download.cancel() }
    }
}
