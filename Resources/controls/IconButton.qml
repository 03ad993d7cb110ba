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

    // Says that what the button leads to narrows or orders the list.
    Rectangle {
        objectName: "mark"
        visible: root.button.mark.length > 0
        anchors { right: parent.right; top: parent.top; margins: 8 }
        width: 8
        height: 8
        radius: 4
        color: Theme.accent
    }

    Image {
        anchors.centerIn: parent
        source: App.imageUrl(root.image)
    }
}
