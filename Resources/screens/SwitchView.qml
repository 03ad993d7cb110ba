import QtQuick
import Veltramoor

// The login screen, or the tabs; the tabs keep their state beneath the login screen.
FocusScope {
    id: root
    objectName: "switchView"
    focus: true

    required property SwitchViewController controller

    ScreenLoader {
        objectName: "tabsScreen"
        anchors.fill: parent
        controller: root.controller.tabs
        visible: root.controller.showLogin
        focus: visible
    }

    ScreenLoader {
        objectName: "loginScreen"
        anchors.fill: parent
        controller: root.controller.showLogin ? null : root.controller.loginViewController
        visible: !root.controller.showLogin
        focus: visible
    }
}
