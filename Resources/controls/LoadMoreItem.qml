import QtQuick
import Veltramoor

// The row that asks for the next page, with the date down to which the list reaches.
Rectangle {
    id: root
    objectName: "loadMoreItem"

    required property LoadMoreItemView item
    property bool pressed: false

    color: pressed ? Theme.rowPressed : Theme.raised
    opacity: item.userInteractionEnabled ? 1 : 0.5

    Row {
        anchors.centerIn: parent
        spacing: 8

        Text {
            anchors.verticalCenter: parent.verticalCenter
            text: qsTr("Load more")
            color: root.pressed ? Theme.textStrong : Theme.accent
            font { family: Theme.fontFamily; pixelSize: 14; bold: true }
        }
        Text {
            objectName: "pageLbl"
            anchors.verticalCenter: parent.verticalCenter
            width: Math.min(implicitWidth, root.width / 2)
            text: root.item.pageLbl
            textFormat: Text.PlainText
            color: Theme.text
            fontSizeMode: Text.HorizontalFit
            minimumPixelSize: 8
            font { family: Theme.fontFamily; pixelSize: 13 }
        }
    }
}
