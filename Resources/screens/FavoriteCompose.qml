import QtQuick
import Veltramoor

// The form for a new filter: one field, what is wrong with its text, and two actions.
FocusScope {
    id: root
    objectName: "favoriteCompose"
    focus: true

    required property FavoriteComposeViewController controller

    Rectangle {
        anchors.fill: parent
        color: Theme.ground

        // What no control takes stops here.
        MouseArea {
            anchors.fill: parent
        }
    }

    Rectangle {
        id: bar
        width: parent.width
        height: Theme.barHeight
        color: Theme.bar

        BarText {
            id: cancel
            objectName: "cancelCompose"
            label: qsTr("Cancel")
            onClicked: root.controller.cancel()
        }
        Text {
            readonly property real side: Math.max(cancel.width, save.width)
            x: side
            width: parent.width - 2 * side
            anchors.verticalCenter: parent.verticalCenter
            horizontalAlignment: Text.AlignHCenter
            fontSizeMode: Text.HorizontalFit
            minimumPixelSize: 10
            elide: Text.ElideRight
            text: root.controller.title
            color: Theme.textStrong
            font { family: Theme.fontFamily; pixelSize: Theme.scaled(17); bold: true }
        }
        BarText {
            id: save
            objectName: "saveFilter"
            anchors.right: parent.right
            label: qsTr("Save")
            strong: true
            enabled: root.controller.valid
            onClicked: root.controller.updateList()
        }
    }

    FormScroll {
        id: scroll
        // Where the focus is after Return while there is nothing to save.
        activeFocusOnTab: true
        anchors { fill: parent; topMargin: bar.height }
        contentHeight: form.height + 40

        Column {
            id: form
            anchors.horizontalCenter: parent.horizontalCenter
            y: 20
            width: Math.min(parent.width - 40, Theme.formWidth - 40)
            spacing: 10

            Text {
                width: parent.width
                text: qsTr("Names to show, as a regular expression")
                wrapMode: Text.WordWrap
                color: Theme.text
                font { family: Theme.fontFamily; pixelSize: Theme.scaled(14) }
            }

            FormField {
                id: field
                objectName: "newItem"
                width: parent.width
                focus: true
                field: root.controller.newItem
                label: qsTr("Regular expression")
                placeholder: qsTr("for example 1080p.*x26[45]")
                onReturned: (save.enabled ? save : scroll).forceActiveFocus()
            }

            // Points at the place in the field above, or to the side where it is out of view.
            Item {
                id: place
                objectName: "problemMark"
                property real at: 0

                // Looks when the field has taken the text and scrolled to its cursor.
                Timer {
                    id: look
                    interval: 0
                    onTriggered: place.at = field.xOf(root.controller.problemOffset)
                }

                Connections {
                    target: root.controller
                    function onJudged(): void { look.restart() }
                }
                Connections {
                    target: field
                    function onCursorChanged(): void { look.restart() }
                }

                width: parent.width
                height: 10
                visible: root.controller.problemOffset >= 0

                Text {
                    x: Math.max(0, Math.min(place.width - width, place.at - width / 2))
                    y: -8
                    text: place.at < 0 ? "\u25C4" : place.at > place.width ? "\u25BA" : "\u25B2"
                    color: Theme.trouble
                    font { family: Theme.fontFamily; pixelSize: Theme.scaled(13) }
                }
            }

            Text {
                objectName: "problemText"
                width: parent.width
                visible: text.length > 0
                text: root.controller.problem
                textFormat: Text.PlainText
                wrapMode: Text.WordWrap
                color: Theme.trouble
                font { family: Theme.fontFamily; pixelSize: Theme.scaled(14) }
                Accessible.role: Accessible.AlertMessage
                Accessible.name: text
            }

            Text {
                objectName: "matchNote"
                width: parent.width
                visible: text.length > 0
                text: root.controller.matchNote
                textFormat: Text.PlainText
                wrapMode: Text.WordWrap
                color: Theme.text
                font { family: Theme.fontFamily; pixelSize: Theme.scaled(14) }
            }

            Text {
                width: parent.width
                text: qsTr("A name is shown when the expression is found anywhere in it. "
                           + "Capital and small letters differ.")
                wrapMode: Text.WordWrap
                color: Theme.faint
                font { family: Theme.fontFamily; pixelSize: Theme.scaled(12) }
            }
        }
    }
}
