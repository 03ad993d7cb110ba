import QtQuick
import Veltramoor

// The login screen. It scrolls up a little for the keyboard, and turns over for the information
// panel.
FocusScope {
    id: root
    objectName: "loginView"
    focus: true

    required property LoginViewController controller

    // The screen may outlive its controller by a moment.
    function takeFrame(): void {
        if (controller)
            controller.view.frame = Qt.rect(0, 0, width, height)
    }
    onWidthChanged: takeFrame()
    onHeightChanged: takeFrame()
    Component.onCompleted: takeFrame()

    Rectangle {
        anchors.fill: parent
        color: Theme.ground
    }

    Flipable {
        id: turning
        objectName: "flip"
        anchors.fill: parent

        property real angle: root.controller.infoViewShown ? 180 : 0
        Behavior on angle {
            NumberAnimation { duration: App.device.reducedMotion ? 0 : 1000; easing.type: Easing.InOutQuad }
        }
        transform: Rotation {
            origin { x: turning.width / 2; y: turning.height / 2 }
            axis { x: 0; y: 1; z: 0 }
            angle: turning.angle
        }

        front: LoginFront {
            width: turning.width
            height: turning.height
            controller: root.controller
            enabled: !root.controller.infoViewShown
            focus: enabled
        }
        back: Loader {
            width: turning.width
            height: turning.height
            // Made when it is first asked for.
            active: root.controller.infoViewShown || turning.angle > 0
            sourceComponent: InfoPanel {
                // qmllint disable unqualified
                info: root.controller.infoView
                enabled: root.controller.infoViewShown
                onDone: root.controller.returnView()
                // qmllint enable unqualified
                Component.onCompleted: forceActiveFocus()
            }
        }
    }
}
