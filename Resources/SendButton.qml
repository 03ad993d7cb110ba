import QtQuick
import Veltramoor

// A row's accessory: pushes the torrent to the person's computer. Long names end under its plate.
Pressable {
    id: root

    property color plate: Theme.row

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
    }
}
