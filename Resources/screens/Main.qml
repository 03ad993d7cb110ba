import QtQuick
import QtQuick.Window
import Veltramoor

// The window: the root screen, the overlays above it, alerts above those.
Window {
    id: window
    objectName: "window"

    width: 360
    height: 720
    minimumWidth: 320
    // A phone on its side.
    minimumHeight: 300
    visible: true
    color: Theme.edge
    title: qsTr("Veltramoor")

    function takeSize(): void {
        App.device.screenSize = Qt.size(column.width, column.height)
        App.window.frame = Qt.rect(0, 0, column.width, column.height)
    }

    Component.onCompleted: takeSize()

    readonly property bool takesKeys: rootScreen.enabled

    // What has the focus may be disabled, hidden or gone the next moment. Keys go on from there: to the
    // next control of its screen, but for fields, which would have the keyboard come up by itself.
    onActiveFocusItemChanged: {
        if (activeFocusItem && activeFocusItem.activeFocusOnTab)
            focusedLast = activeFocusItem
        focusSettling.restart()
    }
    property Item focusedLast: null
    // A control that is disabled while it works gets the focus back, unless the person has moved on from
    // the one that stands in for it.
    property Item atWork: null
    property Item standIn: null
    readonly property bool hasWorked: atWork !== null && atWork.enabled
    onHasWorkedChanged: focusSettling.restart()
    function giveBack(): void {
        if (standIn && standIn.activeFocus)
            atWork.forceActiveFocus(Qt.OtherFocusReason)
        else if (standIn && standIn.focus)
            atWork.focus = true
        atWork = null
    }

    Timer {
        id: focusSettling
        interval: 0
        onTriggered: {
            if (window.hasWorked)
                window.giveBack()
            window.keepFocus()
        }
    }

    function keepFocus(): void {
        if (!active || App.alertView.visible || App.menu.open)
            return
        for (let item = activeFocusItem; item; item = item.parent) {
            // The engine has items of its own for a page.
            if (item.activeFocusOnTab || item.objectName === "webPlace")
                return
        }
        let next = activeFocusItem && activeFocusItem !== contentItem ? activeFocusItem
                 : modal.shown ? modal : rootScreen
        for (let steps = 0; next && steps < 20; ++steps) {
            next = next.nextItemInFocusChain(true)
            if (!(next instanceof TextInput)) {
                atWork = null
                if (focusedLast && focusedLast.visible && !focusedLast.enabled)
                    atWork = focusedLast
                standIn = next
                next.forceActiveFocus(Qt.OtherFocusReason)
                return
            }
        }
    }

    // Taken before any screen, for a web page keeps every key that it is given.
    Shortcut {
        sequence: "Escape"
        autoRepeat: false
        onActivated: App.escape()
    }

    Shortcut {
        sequences: ["Ctrl+F"]
        enabled: window.takesKeys
        onActivated: App.search()
    }
    Shortcut {
        sequences: ["F5", "Ctrl+R"]
        enabled: window.takesKeys
        autoRepeat: false
        onActivated: App.reload()
    }
    Shortcut {
        sequences: ["Alt+Left"]
        enabled: window.takesKeys
        onActivated: App.goBack()
    }
    Shortcut {
        sequences: ["Alt+Right"]
        enabled: window.takesKeys
        onActivated: App.goForward()
    }
    component TabKey: Shortcut {
        id: tabKey
        required property int key
        sequences: ["Ctrl+" + tabKey.key]
        // qmllint disable unqualified
        enabled: window.takesKeys
        // qmllint enable unqualified
        onActivated: App.selectTab(tabKey.key === 9 ? -1 : tabKey.key - 1)
    }
    TabKey { key: 1 }
    TabKey { key: 2 }
    TabKey { key: 3 }
    TabKey { key: 4 }
    TabKey { key: 5 }
    TabKey { key: 6 }
    TabKey { key: 7 }
    TabKey { key: 8 }
    TabKey { key: 9 }

    // Lines too long to be followed help nobody: a wider window shows a column in its middle.
    Item {
        id: column
        objectName: "column"
        anchors.horizontalCenter: parent.horizontalCenter
        width: Math.min(parent.width, Theme.columnWidth)
        height: parent.height
        onWidthChanged: window.takeSize()
        onHeightChanged: window.takeSize()

        ScreenLoader {
            id: rootScreen
            objectName: "rootScreen"
            // Where no field has taken it.
            Keys.onPressed: event => {
                if (event.text !== "?")
                    return
                event.accepted = true
                App.showKeys()
            }
            anchors.fill: parent
            controller: App.viewController
            focus: !App.alertView.visible && !modal.shown && !App.menu.open
            enabled: !App.alertView.visible && !modal.shown && !App.menu.open
        }

        // A form that covers everything until it is done with.
        ScreenLoader {
            id: modal
            objectName: "modalScreen"
            anchors.fill: parent
            readonly property bool shown: controller !== null
            controller: App.presentation.controller
            focus: shown && !App.alertView.visible
            enabled: !App.alertView.visible
        }

        LoadingOverlay {
            objectName: "loadingOverlay"
            indicator: App.loadingIndicator
            below: App.sendingTorrentIndicator
        }

        LoadingOverlay {
            objectName: "sendingOverlay"
            indicator: App.sendingTorrentIndicator
        }
    }

    // Read and made when a row asks for its menu.
    Loader {
        objectName: "menuPlace"
        anchors.fill: parent
        source: App.menu.open ? "RowMenu.qml" : ""
        focus: App.menu.open && !App.alertView.visible
        enabled: !App.alertView.visible
    }

    // Heard, not seen.
    Item {
        objectName: "announcement"
        width: 1
        height: 1
        visible: App.announcements.text.length > 0
        Accessible.role: Accessible.AlertMessage
        Accessible.name: App.announcements.text
    }

    AlertBox {
        anchors.fill: parent
        alert: App.alertView
    }

    // A mouse's own buttons for back and forward, wherever it points.
    MouseArea {
        objectName: "mouseHistory"
        anchors.fill: parent
        acceptedButtons: Qt.BackButton | Qt.ForwardButton
        enabled: window.takesKeys
        onPressed: mouse => mouse.button === Qt.BackButton ? App.goBack() : App.goForward()
        Accessible.ignored: true
    }
}
