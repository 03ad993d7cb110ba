import QtQuick
import Veltramoor

// The bar over a pushed screen: its title between the screen's own buttons, and the way back.
FocusScope {
    id: bar
    objectName: "navigationBar"

    required property ViewController screen
    property bool black: true
    // Nothing to go back to.
    property bool root: false

    height: Theme.barHeight

    Rectangle {
        anchors.fill: parent
        color: bar.black ? Theme.bar : Theme.barPlain

        // What no button takes stops here.
        MouseArea {
            anchors.fill: parent
        }
    }

    Pressable {
        objectName: "backButton"
        width: 50
        height: parent.height
        visible: bar.screen.leftBarItem.width === 0 && !bar.root
        label: qsTr("Back")
        onClicked: bar.screen.cancel()

        Image {
            anchors.centerIn: parent
            source: App.imageUrl("back.png")
        }
    }

    BarButtons {
        id: left
        item: bar.screen.leftBarItem
        height: parent.height
    }

    BarButtons {
        id: right
        anchors.right: parent.right
        item: bar.screen.rightBarItem
        height: parent.height
    }

    Text {
        objectName: "navigationTitle"
        readonly property real side: Math.max(60, left.width, right.width)
        x: side
        width: Math.max(0, parent.width - 2 * side)
        anchors.verticalCenter: parent.verticalCenter
        horizontalAlignment: Text.AlignHCenter
        elide: Text.ElideRight
        text: bar.screen.title
        textFormat: Text.PlainText
        color: Theme.textStrong
        font { family: Theme.fontFamily; pixelSize: Theme.scaled(17); bold: true }
        fontSizeMode: Text.HorizontalFit
        minimumPixelSize: 13
    }
}
