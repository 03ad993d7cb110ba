import QtQuick
import Veltramoor

// The mark of what has the keyboard.
Rectangle {
    // Whether it is to be seen.
    property bool shown: false

    anchors.fill: parent
    visible: shown
    color: "transparent"
    border { width: 2; color: Theme.accent }
}
