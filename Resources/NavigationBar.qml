import QtQuick
import Veltramoor

// The bar over a pushed screen: its title and the way back.
Rectangle {
    id: root
    objectName: "navigationBar"

    required property string title

    signal back()

    height: 44
    color: "#e6000000"

    Pressable {
        objectName: "backButton"
        width: 50
        height: parent.height
        label: qsTr("Back")
        onClicked: root.back()

        Image {
            anchors.centerIn: parent
            source: App.imageUrl("back.png")
        }
    }

    Text {
        objectName: "navigationTitle"
        anchors.centerIn: parent
        width: parent.width - 120
        horizontalAlignment: Text.AlignHCenter
        elide: Text.ElideRight
        text: root.title
        textFormat: Text.PlainText
        color: Theme.textStrong
        font { family: Theme.fontFamily; pixelSize: 17; bold: true }
    }
}
