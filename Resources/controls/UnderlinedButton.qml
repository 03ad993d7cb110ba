import QtQuick
import Veltramoor

// A text button that looks like a link.
Pressable {
    id: root

    width: Math.max(Theme.touchTarget, title.implicitWidth + 16)
    height: Theme.touchTarget

    UIUnderlinedLabel {
        id: title
        anchors.centerIn: parent
        width: implicitWidth
        height: implicitHeight
        title: root.label
    }
}
