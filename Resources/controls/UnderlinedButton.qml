import QtQuick
import Veltramoor

// A text button that looks like a link.
Pressable {
    id: root

    width: Math.max(Theme.touchTarget, Math.min(title.implicitWidth + 16, parent ? parent.width : 0))
    height: Theme.touchTarget

    UIUnderlinedLabel {
        id: title
        anchors.centerIn: parent
        width: Math.min(implicitWidth, parent.width - 16)
        height: implicitHeight
        title: root.label
        pixelSize: Theme.scaled(15)
    }
}
