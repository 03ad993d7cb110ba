import QtQuick
import Veltramoor

// What this program is and which version of it.
FocusScope {
    id: root
    objectName: "infoPanel"

    required property InfoView info
    signal done()

    Rectangle {
        anchors.fill: parent
        color: Theme.ground

        MouseArea {
            anchors.fill: parent
        }
    }

    Column {
        anchors.centerIn: parent
        width: Math.min(parent.width - 40, Theme.formWidth)
        spacing: 16

        Text {
            width: parent.width
            horizontalAlignment: Text.AlignHCenter
            text: qsTr("Veltramoor")
            color: Theme.textStrong
            font { family: Theme.fontFamily; pixelSize: 26; bold: true }
        }
        Text {
            objectName: "versionLbl"
            width: parent.width
            horizontalAlignment: Text.AlignHCenter
            text: root.info.versionLbl
            textFormat: Text.PlainText
            color: Theme.accent
            font { family: Theme.fontFamily; pixelSize: 17 }
        }
        Text {
            width: parent.width
            wrapMode: Text.WordWrap
            text: qsTr("Browse a torrent index and push what you find to the BitTorrent client on your own computer. Say where that is on the tab \"Remote Settings\".\n\nWhat you type stays on this device. The site gets your name and password only when you log in, and your computer gets its own only when you send something.")
            color: Theme.text
            font { family: Theme.fontFamily; pixelSize: 15 }
        }
        TextButton {
            objectName: "returnButton"
            width: parent.width
            focus: true
            label: qsTr("Back")
            onClicked: root.done()
        }
    }
}
