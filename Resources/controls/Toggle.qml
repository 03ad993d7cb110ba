import QtQuick
import Veltramoor

// A switch with its label to the left; the whole line can be touched.
Pressable {
    id: root

    required property Switch control
    property string text
    /// Whether the switch stands out, because it is what lets the person do what they just tried.
    property bool pointedOut: false

    // Brings the keyboard here until the person goes on.
    function pointOut(): void {
        forceActiveFocus()
        pointedOut = true
    }
    onActiveFocusChanged: if (!activeFocus) pointedOut = false

    height: Theme.touchTarget
    label: text
    Accessible.role: Accessible.CheckBox
    Accessible.checkable: true
    Accessible.checked: control.on
    onClicked: {
        pointedOut = false
        control.toggle()
    }

    Rectangle {
        objectName: root.objectName + "PointedOut"
        z: -1
        anchors { fill: parent; margins: 2 }
        radius: root.ringRadius
        visible: root.pointedOut
        color: Theme.edge
        border { width: 2; color: Theme.accent }
    }

    Text {
        anchors { left: parent.left; leftMargin: 8; right: track.left; rightMargin: 8; verticalCenter: parent.verticalCenter }
        elide: Text.ElideRight
        text: root.text
        color: Theme.textStrong
        font { family: Theme.fontFamily; pixelSize: Theme.scaled(16) }
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
