import QtQuick
import Veltramoor

// The donation picture; a tap opens its page outside the application.
FocusScope {
    id: root
    objectName: "donateView"

    required property DonateViewController controller

    width: controller.frame.width
    height: controller.frame.height
    activeFocusOnTab: true

    Accessible.role: Accessible.Link
    Accessible.name: qsTr("Donate to Veltramoor")
    Accessible.onPressAction: controller.donate()

    Keys.onReturnPressed: event => press(event)
    Keys.onEnterPressed: event => press(event)
    Keys.onSpacePressed: event => press(event)

    function press(event: KeyEvent): void {
        if (!event.isAutoRepeat)
            controller.donate()
    }

    Text {
        objectName: "donateLink"
        anchors.centerIn: parent
        // Cut at the foot of the picture: the line below a link ends a word, not a picture.
        height: 47
        clip: true
        text: root.controller.html
        textFormat: Text.StyledText
    }

    // A picture within a link takes no taps of its own.
    MouseArea {
        anchors.fill: parent
        onClicked: root.controller.donate()
    }

    FocusRing {
        shown: root.activeFocus
        radius: 6
    }
}
