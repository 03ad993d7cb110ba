import QtQuick
import Veltramoor

// The mark of what has the keyboard, for somebody who uses keys: what was touched does without.
Rectangle {
    // Whether the control has the focus.
    property bool shown: false
    readonly property bool lit: shown && App.input.keys

    anchors.fill: parent
    color: "transparent"
    border.width: lit ? 2 : 0
    border.color: Theme.accent
}
