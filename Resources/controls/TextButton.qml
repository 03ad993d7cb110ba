import QtQuick
import Veltramoor

// A button with its name on a plate; the filled one is what the screen is for.
Pressable {
    id: root

    property bool filled: false

    height: Theme.touchTarget
    ringColor: filled ? Theme.textStrong : Theme.accent

    Rectangle {
        z: -1
        anchors { fill: parent; margins: 2 }
        radius: 6
        color: root.filled ? Theme.accent : Theme.raised
        border { width: root.filled ? 0 : Theme.plateBorder; color: Theme.outline }
    }

    Text {
        anchors { fill: parent; margins: 8 }
        horizontalAlignment: Text.AlignHCenter
        verticalAlignment: Text.AlignVCenter
        fontSizeMode: Text.HorizontalFit
        minimumPixelSize: 10
        text: root.label
        textFormat: Text.PlainText
        color: root.filled ? Theme.accentText : root.lightened ? Theme.textStrong : Theme.accent
        font { family: Theme.fontFamily; pixelSize: Theme.scaled(16); bold: true }
    }
}
