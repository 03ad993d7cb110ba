import QtQuick
import Veltramoor

// A stack of screens: the topmost is on show, the others keep their state beneath it.
FocusScope {
    id: root
    objectName: "navigationView"
    focus: true

    required property NavigationController controller

    Repeater {
        model: root.controller.stack

        ScreenLoader {
            required property int index

            anchors.fill: parent
            // qmllint disable unqualified
            visible: index === root.controller.depth - 1
            // qmllint enable unqualified
            focus: visible
        }
    }

    NavigationBar {
        width: parent.width
        visible: !root.controller.navigationBarHidden
        title: root.controller.topViewController.title
        onBack: root.controller.popViewController()
    }
}
