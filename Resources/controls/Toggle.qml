import QtQuick
import Veltramoor

// A switch with its label to the left; the whole line can be touched.
Pressable {
    id: root

    required property Switch control
    property string text

    height: Theme.touchTarget
    label: text
    Accessible.role: Accessible.CheckBox
    Accessible.checkable: true
    Accessible.checked: control.on
    onClicked: control.toggle()

    Text {
        anchors { left: parent.left; leftMargin: 8; right: track.left; rightMargin: 8; verticalCenter: parent.verticalCenter }
        elide: Text.ElideRight
        text: root.text
        color: Theme.textStrong
        font { family: Theme.fontFamily; pixelSize: 16 }
    }

    Rectangle {
        id: track
        anchors { right: parent.right; rightMargin: 8; verticalCenter: parent.verticalCenter }
        width: 48
        height: 28
        radius: height / 2
        color: root.control.on ? Theme.accent : Theme.off

        Behavior on color { ColorAnimation { duration: Theme.motion } }

        Rectangle {
            x: root.control.on ? parent.width - width - 3 : 3
            anchors.verticalCenter: parent.verticalCenter
            width: 22
            height: 22
            radius: 11
            color: Theme.textStrong

            Behavior on x { NumberAnimation { duration: Theme.motion } }
        }
    }
}
