import QtQuick
import Veltramoor

// One filter. Dragged to the left it uncovers its delete button.
Item {
    id: root
    objectName: "filterRow"

    required property int index
    required property string regex
    required property string problem

    readonly property bool current: ListView.isCurrentItem && ListView.view.activeFocus
    readonly property bool uncovered: face.x < 0

    signal touched()
    signal removed()

    height: Math.max(Theme.touchTarget, texts.height + 12)

    Accessible.role: Accessible.ListItem
    Accessible.name: problem.length > 0 ? qsTr("%1, not valid: %2").arg(regex).arg(problem) : regex

    Pressable {
        objectName: "deleteFilter"
        anchors { right: parent.right; top: parent.top; bottom: parent.bottom }
        width: 88
        visible: root.uncovered
        activeFocusOnTab: false
        label: qsTr("Delete %1").arg(root.regex)
        onClicked: root.removed()

        Rectangle {
            z: -1
            anchors.fill: parent
            color: Theme.trouble
        }
        Text {
            anchors.centerIn: parent
            text: qsTr("Delete")
            color: Theme.accentText
            font { family: Theme.fontFamily; pixelSize: 15; bold: true }
        }
    }

    Rectangle {
        id: face
        width: parent.width
        height: parent.height
        color: touch.pressed ? Theme.rowPressed : Theme.ground

        Behavior on x {
            enabled: !touch.drag.active
            NumberAnimation { duration: Theme.motion }
        }

        Column {
            id: texts
            x: 5
            width: parent.width - 5
            anchors.verticalCenter: parent.verticalCenter
            spacing: 2

            Text {
                objectName: "filterText"
                width: parent.width
                text: root.regex.length > 0 ? root.regex : qsTr("(empty: accepts every torrent)")
                textFormat: Text.PlainText
                elide: Text.ElideRight
                maximumLineCount: 1
                color: Theme.text
                font { family: Theme.fontFamily; pixelSize: 12; bold: true }
            }
            Text {
                objectName: "filterProblem"
                width: parent.width
                visible: text.length > 0
                text: root.problem.length > 0 ? qsTr("Accepts nothing: %1").arg(root.problem) : ""
                textFormat: Text.PlainText
                wrapMode: Text.WordWrap
                color: Theme.trouble
                font { family: Theme.fontFamily; pixelSize: 13 }
            }
        }

        MouseArea {
            id: touch
            objectName: "filterTouch"
            anchors.fill: parent
            drag.target: face
            drag.axis: Drag.XAxis
            drag.minimumX: -88
            drag.maximumX: 0
            preventStealing: drag.active
            onClicked: {
                root.touched()
                face.x = 0
            }
            onReleased: face.x = face.x < -44 ? -88 : 0
            onCanceled: face.x = 0
        }
    }

    FocusRing {
        shown: root.current
    }
}
