import QtQuick
import Veltramoor

// What this program is, which version of it, and who learns what is typed into it.
FocusScope {
    id: root
    objectName: "infoPanel"

    required property InfoView info
    signal done()

    Keys.onPressed: event => {
        switch (event.key) {
        case Qt.Key_Up: scroll.scrollBy(-40); break
        case Qt.Key_Down: scroll.scrollBy(40); break
        case Qt.Key_PageUp: scroll.scrollBy(-scroll.height); break
        case Qt.Key_PageDown: scroll.scrollBy(scroll.height); break
        default: return
        }
        event.accepted = true
    }

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

        // Large text on a small screen is scrolled, so that the button stays in reach.
        Flickable {
            id: scroll
            objectName: "infoScroll"
            width: parent.width
            height: Math.min(texts.height, root.height - 40 - back.height - parent.spacing)
            contentHeight: texts.height
            boundsBehavior: Flickable.StopAtBounds
            clip: contentHeight > height

            function scrollBy(points: real): void {
                contentY = Math.max(0, Math.min(contentHeight - height, contentY + points))
            }

            Column {
                id: texts
                width: scroll.width - (scroll.clip ? 8 : 0)
                spacing: 16

                Text {
                    width: parent.width
                    horizontalAlignment: Text.AlignHCenter
                    text: qsTr("Veltramoor")
                    color: Theme.textStrong
                    font { family: Theme.fontFamily; pixelSize: Theme.scaled(26); bold: true }
                }
                Text {
                    objectName: "versionLbl"
                    width: parent.width
                    horizontalAlignment: Text.AlignHCenter
                    text: root.info.versionLbl
                    textFormat: Text.PlainText
                    color: Theme.accent
                    font { family: Theme.fontFamily; pixelSize: Theme.scaled(17) }
                }
                Text {
                    width: parent.width
                    wrapMode: Text.WordWrap
                    text: qsTr("Browse a torrent index and push what you find to the BitTorrent client on your own computer. Say where that is on the tab \"Remote Settings\".\n\nWhat you type is kept on this device, passwords too. The site sees what you open and search for, and gets your name and password when you log in, with automatic login at each start. Your computer gets its own login with all that you send, test or open there. At a login the makers are asked for news, and learn which version and system this is.")
                    color: Theme.text
                    font { family: Theme.fontFamily; pixelSize: Theme.scaled(15) }
                }
            }
            Rectangle {
                visible: scroll.clip
                x: scroll.width - width
                y: scroll.contentY + scroll.height * scroll.visibleArea.yPosition
                width: 3
                height: scroll.height * scroll.visibleArea.heightRatio
                radius: 1.5
                color: Theme.thumb
            }
        }
        TextButton {
            id: back
            objectName: "returnButton"
            width: parent.width
            focus: true
            label: qsTr("Back")
            onClicked: root.done()
        }
    }
}
