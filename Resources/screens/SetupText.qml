import QtQuick
import Veltramoor

// A few lines to read: paragraphs, and steps that begin with a hyphen. Scrolls where it is too high.
FocusScope {
    id: root

    required property string text
    readonly property bool scrolls: list.contentHeight > list.height

    activeFocusOnTab: scrolls
    Accessible.role: Accessible.StaticText
    Accessible.name: text

    onTextChanged: list.contentY = 0

    function scroll(by: real): void {
        list.contentY = Math.max(0, Math.min(list.contentHeight - list.height, list.contentY + by))
    }

    Keys.onPressed: event => {
        switch (event.key) {
        case Qt.Key_Down: scroll(20); break
        case Qt.Key_Up: scroll(-20); break
        case Qt.Key_PageDown: scroll(list.height); break
        case Qt.Key_PageUp: scroll(-list.height); break
        default: return
        }
        event.accepted = true
    }

    Rectangle {
        anchors.fill: parent
        radius: 6
        color: Theme.row
    }

    Flickable {
        id: list
        anchors { fill: parent; margins: 10; rightMargin: 14 }
        contentHeight: lines.height
        clip: true
        boundsBehavior: Flickable.StopAtBounds
        interactive: root.scrolls

        Column {
            id: lines
            width: list.width
            spacing: 4

            Repeater {
                model: root.text.split("\n").map(line => line.trim()).filter(line => line.length > 0)

                // qmllint disable unqualified
                Text {
                    required property string modelData
                    readonly property bool step: modelData.startsWith("- ")

                    width: lines.width
                    leftPadding: step ? 12 : 0
                    wrapMode: Text.Wrap
                    textFormat: Text.PlainText
                    text: step ? modelData.slice(2) : modelData
                    color: Theme.text
                    font { family: Theme.fontFamily; pixelSize: Theme.scaled(13) }
                    Accessible.ignored: true

                    Text {
                        visible: parent.step
                        text: "\u2022"
                        color: Theme.accent
                        font: parent.font
                    }
                }
                // qmllint enable unqualified
            }
        }
    }

    // How much there is, and where in it this is.
    Rectangle {
        visible: root.scrolls
        anchors { right: parent.right; rightMargin: 4 }
        y: 6 + (root.height - 12 - height) * list.contentY / Math.max(1, list.contentHeight - list.height)
        width: 4
        height: (root.height - 12) * list.height / list.contentHeight
        radius: 2
        color: Theme.rowPressed
    }

    FocusRing {
        radius: 4
        shown: root.activeFocus
    }
}
