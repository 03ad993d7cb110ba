import QtQuick
import Veltramoor

// The mark for somebody who uses keys: a control that was touched, or that has the focus because its
// screen opened by touch, does without.
FocusRing {
    id: root

    required property Item control
    // To be set by the control: true when it sees a key, false when it is touched. The key that
    // brought the focus is seen as it is let go.
    property bool keyed: false

    anchors.margins: -3
    shown: control.activeFocus && keyed
    radius: 4

    Connections {
        target: root.control
        function onActiveFocusChanged(activeFocus: bool): void {
            if (!activeFocus)
                root.keyed = false
        }
    }
}
