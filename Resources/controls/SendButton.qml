import QtQuick
import Veltramoor

// A row's accessory: pushes the torrent to the person's computer. Long names end under its plate.
Pressable {
    id: root

    property color plate: Theme.row
    property bool sent: false

    width: 45

    Rectangle {
        z: -1
        anchors.fill: parent
        color: root.plate
    }

    Image {
        anchors.centerIn: parent
        width: 25
        height: 25
        source: App.imageUrl("download.png")
        opacity: root.sent ? 0.5 : 1
    }

    Image {
        objectName: "sentMark"
        anchors { right: parent.right; rightMargin: 5; bottom: parent.bottom; bottomMargin: 3 }
        visible: root.sent
        source: App.imageUrl("sent.png")
    }
}
