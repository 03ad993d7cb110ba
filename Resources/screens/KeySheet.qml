import QtQuick
import Veltramoor

// What the keys do. Any key that leads away, and a tap on "Close", closes it.
FocusScope {
    id: root
    objectName: "keySheet"
    focus: true

    required property KeySheetController controller

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
        z: 1
        width: parent.width
        height: Theme.barHeight
        color: Theme.bar

        BarText {
            objectName: "closeKeys"
            label: qsTr("Close")
            focus: true
            onClicked: root.controller.cancel()
        }
        Text {
            anchors.centerIn: parent
            text: root.controller.title
            color: Theme.textStrong
            font { family: Theme.fontFamily; pixelSize: Theme.scaled(17); bold: true }
        }
    }

    Keys.onPressed: event => {
        switch (event.key) {
        case Qt.Key_Up: scroll.by(-40); break
        case Qt.Key_Down: scroll.by(40); break
        case Qt.Key_Question: root.controller.cancel(); break
        default: return
        }
        event.accepted = true
    }

    Flickable {
        id: scroll
        anchors { top: bar.bottom; bottom: parent.bottom; horizontalCenter: parent.horizontalCenter }
        width: Math.min(parent.width, Theme.formWidth)
        contentHeight: lines.height + 32
        boundsBehavior: Flickable.StopAtBounds

        function by(points: real): void {
            contentY = Math.max(0, Math.min(contentHeight - height, contentY + points))
        }

        Column {
            id: lines
            x: 20
            y: 16
            width: parent.width - 40
            spacing: 12

            Repeater {
                model: root.controller.keys.length / 2

                Row {
                    id: line

                    required property int index
                    // qmllint disable unqualified
                    readonly property string key: root.controller.keys[2 * index]
                    readonly property string does: root.controller.keys[2 * index + 1]
                    // qmllint enable unqualified

                    spacing: 12
                    Accessible.role: Accessible.StaticText
                    Accessible.name: qsTr("%1: %2").arg(key).arg(does)

                    Text {
                        id: keys
                        // qmllint disable unqualified
                        width: Math.min(Theme.scaled(120), lines.width * 0.45)
                        // qmllint enable unqualified
                        text: line.key
                        color: Theme.accent
                        wrapMode: Text.WordWrap
                        font { family: Theme.fontFamily; pixelSize: Theme.scaled(14); bold: true }
                        Accessible.ignored: true
                    }
                    Text {
                        // qmllint disable unqualified
                        width: lines.width - keys.width - 12
                        // qmllint enable unqualified
                        text: line.does
                        color: Theme.text
                        wrapMode: Text.WordWrap
                        font { family: Theme.fontFamily; pixelSize: Theme.scaled(14) }
                        Accessible.ignored: true
                    }
                }
            }
        }
    }
}
