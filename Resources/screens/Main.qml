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
    minimumHeight: 480
    visible: true
    color: Theme.ground
    title: qsTr("Veltramoor")

    function takeSize(): void {
        App.device.screenSize = Qt.size(contentItem.width, contentItem.height)
        App.window.frame = Qt.rect(0, 0, contentItem.width, contentItem.height)
    }

    Component.onCompleted: takeSize()
    contentItem.onWidthChanged: takeSize()
    contentItem.onHeightChanged: takeSize()

    // Taken before any screen, for a web page keeps every key that it is given.
    Shortcut {
        sequence: "Escape"
        autoRepeat: false
        onActivated: App.escape()
    }

    ScreenLoader {
        objectName: "rootScreen"
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

    // Read and made when a row asks for its menu.
    Loader {
        objectName: "menuPlace"
        anchors.fill: parent
        source: App.menu.open ? "RowMenu.qml" : ""
        focus: App.menu.open && !App.alertView.visible
        enabled: !App.alertView.visible
    }

    AlertBox {
        anchors.fill: parent
        alert: App.alertView
    }
}
