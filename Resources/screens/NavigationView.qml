import QtQuick
import Veltramoor

// A stack of screens: the topmost is on show, the others keep their state beneath it.
FocusScope {
    id: root
    objectName: "navigationView"
    focus: true

    required property NavigationController controller

    // First in the order of Tab, and drawn above the screens.
    NavigationBar {
        z: 1
        width: parent.width
        visible: !root.controller.navigationBarHidden
        black: root.controller.blackBar
        root: root.controller.depth === 1
        screen: root.controller.topViewController
    }

    Repeater {
        model: root.controller.stack

        ScreenLoader {
            required controller
            required property int index

            anchors.fill: parent
            // qmllint disable unqualified
            visible: index === root.controller.depth - 1
            // qmllint enable unqualified
            focus: visible
        }
    }
}
