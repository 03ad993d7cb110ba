import QtQuick
import Veltramoor

// A button of a form's bar that is a word.
Pressable {
    id: root

    property bool strong: false

    width: Math.max(60, word.implicitWidth + 24)
    height: Theme.barHeight

    Text {
        id: word
        anchors.centerIn: parent
        text: root.label
        textFormat: Text.PlainText
        color: Theme.accent
        font { family: Theme.fontFamily; pixelSize: Theme.scaled(16); bold: root.strong }
    }
}
