import QtQuick
import Veltramoor

// An alert over a darkened window: nothing else takes input until one of its buttons closed it.
FocusScope {
    id: root
    objectName: "alertContent"

    required property AlertView alert

    Component.onCompleted: forceActiveFocus()

    Accessible.role: Accessible.AlertMessage
    Accessible.name: alert.title + ". " + alert.message

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
        color: Theme.shade

        MouseArea {
            anchors.fill: parent
            hoverEnabled: true
        }
    }

    Rectangle {
        id: box
        anchors.centerIn: parent
        width: Math.min(parent.width - 40, Theme.scaled(320))
        height: content.height + 32
        radius: 12
        color: Theme.row
        border.color: Theme.outline

        Column {
            id: content
            x: 16
            y: 16
            width: parent.width - 32
            spacing: 10

            Text {
                id: title
                objectName: "alertTitle"
                visible: text.length > 0
                width: parent.width
                horizontalAlignment: Text.AlignHCenter
                wrapMode: Text.WordWrap
                text: root.alert.title
                textFormat: Text.PlainText
                color: Theme.textStrong
                font { family: Theme.fontFamily; pixelSize: Theme.scaled(17); bold: true }
            }
            // A long message is scrolled, so that the buttons stay in reach.
            Flickable {
                id: scroll
                objectName: "alertScroll"
                visible: message.text.length > 0
                width: parent.width
                height: Math.min(message.implicitHeight, root.height - 72 - buttons.height
                                 - (title.visible ? title.height : 0))
                contentHeight: message.implicitHeight
                boundsBehavior: Flickable.StopAtBounds
                clip: contentHeight > height

                function scrollBy(points: real): void {
                    contentY = Math.max(0, Math.min(contentHeight - height, contentY + points))
                }

                Text {
                    id: message
                    objectName: "alertMessage"
                    x: 6
                    width: parent.width - 12
                    horizontalAlignment: Text.AlignHCenter
                    wrapMode: Text.Wrap
                    text: root.alert.message
                    textFormat: Text.PlainText
                    color: Theme.text
                    font { family: Theme.fontFamily; pixelSize: Theme.scaled(14) }
                    onTextChanged: scroll.contentY = 0
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

            Column {
                id: buttons
                width: parent.width
                spacing: content.spacing

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
                            border { width: Theme.plateBorder; color: Theme.outline }
                        }
                        Text {
                            anchors { fill: parent; margins: 8 }
                            horizontalAlignment: Text.AlignHCenter
                            verticalAlignment: Text.AlignVCenter
                            fontSizeMode: Text.HorizontalFit
                            minimumPixelSize: 10
                            elide: Text.ElideRight
                            text: button.modelData
                            textFormat: Text.PlainText
                            color: button.lightened ? Theme.textStrong : Theme.accent
                            font { family: Theme.fontFamily; pixelSize: Theme.scaled(16); bold: true }
                        }
                    }
                }
            }
        }
    }
}
