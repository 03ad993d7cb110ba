import QtQuick
import Veltramoor

// The signed-in user's name over the account's status.
Pressable {
    id: root

    required property string name
    required property string status

    label: qsTr("%1, status %2").arg(name).arg(status)

    // The strip that it stands on has a fixed height: as large as both lines fit.
    readonly property real fontScale: Math.min(App.device.textScale, height / 31)

    Image {
        id: figure
        anchors { left: parent.left; leftMargin: 8; verticalCenter: parent.verticalCenter }
        source: App.imageUrl("user.png")
    }

    Column {
        anchors {
            left: figure.right
            leftMargin: 8
            right: parent.right
            rightMargin: 4
            verticalCenter: parent.verticalCenter
        }

        Text {
            objectName: "usernameText"
            width: parent.width
            text: root.name
            textFormat: Text.PlainText
            elide: Text.ElideRight
            color: Theme.textStrong
            font { family: Theme.fontFamily; pixelSize: Math.round(15 * root.fontScale); bold: true }
        }
        Text {
            objectName: "ratioLbl"
            width: parent.width
            text: root.status
            textFormat: Text.PlainText
            elide: Text.ElideRight
            color: Theme.text
            font { family: Theme.fontFamily; pixelSize: Math.round(11 * root.fontScale) }
        }
    }
}
