import QtQuick
import Veltramoor

// A button of one icon, bound to a button's state.
Pressable {
    id: root

    required property string image
    required property Button button

    width: visible ? Theme.touchTarget : 0
    height: Theme.touchTarget
    visible: !button.hidden
    enabled: button.enabled

    Image {
        anchors.centerIn: parent
        source: App.imageUrl(root.image)
    }
}
