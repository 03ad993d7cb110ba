import QtQuick
import Veltramoor

// The alert on show: nothing else takes input until one of its buttons closed it.
FocusScope {
    id: root
    objectName: "alertBox"

    required property AlertView alert

    visible: alert.visible
    onVisibleChanged: if (visible) forceActiveFocus()

    Accessible.role: Accessible.AlertMessage
    Accessible.name: alert.title + ". " + alert.message

    Keys.onEscapePressed: event => {
        if (!event.isAutoRepeat)
            alert.dismissWithButtonIndex(0)
    }

    Rectangle {
        anchors.fill: parent
        color: "#99000000"

        MouseArea {
            anchors.fill: parent
            hoverEnabled: true
        }
    }

    Rectangle {
        id: box
        anchors.centerIn: parent
        width: Math.min(parent.width - 40, 320)
        height: content.height + 32
        radius: 12
        color: Theme.row
        border.color: "#5a5a5a"

        Column {
            id: content
            x: 16
            y: 16
            width: parent.width - 32
            spacing: 10

            Text {
                objectName: "alertTitle"
                visible: text.length > 0
                width: parent.width
                horizontalAlignment: Text.AlignHCenter
                wrapMode: Text.WordWrap
                text: root.alert.title
                textFormat: Text.PlainText
                color: Theme.textStrong
                font { family: Theme.fontFamily; pixelSize: 17; bold: true }
            }
            Text {
                objectName: "alertMessage"
                visible: text.length > 0
                width: parent.width
                horizontalAlignment: Text.AlignHCenter
                wrapMode: Text.Wrap
                text: root.alert.message
                textFormat: Text.PlainText
                color: Theme.text
                font { family: Theme.fontFamily; pixelSize: 14 }
            }

            Repeater {
                model: root.alert.buttons

                Pressable {
                    id: button

                    required property int index
                    required property string modelData

                    objectName: "alertButton" + index
                    width: parent.width
                    height: Theme.touchTarget
                    focus: index === 0
                    label: modelData
                    // qmllint disable unqualified
                    onClicked: root.alert.dismissWithButtonIndex(index)
                    // qmllint enable unqualified

                    Rectangle {
                        z: -1
                        anchors { fill: parent; margins: 2 }
                        radius: 6
                        color: Theme.raised
                    }
                    Text {
                        anchors.centerIn: parent
                        text: button.modelData
                        textFormat: Text.PlainText
                        color: Theme.accent
                        font { family: Theme.fontFamily; pixelSize: 16; bold: true }
                    }
                }
            }
        }
    }
}
