import QtQuick
import Veltramoor

// The mark of the control that has the keyboard, for who uses keys: a control that was touched, or
// that has the focus because its screen opened by touch, does without.
Rectangle {
    id: root

    required property Item control
    // To be set by the control: true when it sees a key, false when it is touched. The key that
    // brought the focus is seen as it is let go.
    property bool keyed: false

    anchors { fill: parent; margins: -3 }
    visible: control.activeFocus && keyed
    color: "transparent"
    radius: 4
    border { width: 2; color: Theme.accent }

    Connections {
        target: root.control
        function onActiveFocusChanged(activeFocus: bool): void {
            if (!activeFocus)
                root.keyed = false
        }
    }
}
