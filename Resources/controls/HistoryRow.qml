import QtQuick
import Veltramoor

// A name that was sent. Dragged left it shows its "Delete" button; dragged most of the way it is
// deleted at once.
Item {
    id: root
    objectName: "historyRow"

    required property int index
    required property string name
    property bool opened: false
    property bool ring: false

    signal touched()
    signal pulled()
    signal deleted()

    readonly property real deleteWidth: 88

    height: Theme.rowHeight
    clip: true

    Accessible.role: Accessible.ListItem
    Accessible.name: name
    Accessible.focusable: true

    Rectangle {
        anchors { right: parent.right; top: parent.top }
        width: Math.max(root.deleteWidth, -plate.x)
        height: plate.height
        visible: plate.x < 0
        color: Theme.erase

        Pressable {
            objectName: "deleteButton"
            anchors { right: parent.right; top: parent.top; bottom: parent.bottom }
            width: root.deleteWidth
            activeFocusOnTab: root.opened
            label: qsTr("Delete %1").arg(root.name)
            onClicked: root.deleted()

            Text {
                anchors.centerIn: parent
                text: qsTr("Delete")
                color: Theme.textStrong
                font { family: Theme.fontFamily; pixelSize: 15; bold: true }
            }
        }
    }

    Rectangle {
        id: plate
        objectName: "historyPlate"
        width: root.width
        height: 36
        color: area.pressed && !area.drag.active ? Theme.rowPressed : Theme.row

        // While a finger holds the row, it decides; then the row rests open or shut.
        Binding on x {
            when: !area.drag.active
            restoreMode: Binding.RestoreNone
            value: root.opened ? -root.deleteWidth : 0
        }
        Behavior on x {
            enabled: !area.drag.active
            NumberAnimation { duration: Theme.motion; easing.type: Easing.OutCubic }
        }

        Text {
            objectName: "historyName"
            x: 5
            width: parent.width - 10
            height: parent.height
            verticalAlignment: Text.AlignVCenter
            elide: Text.ElideRight
            text: root.name
            textFormat: Text.PlainText
            color: Theme.text
            font { family: Theme.fontFamily; pixelSize: 15 }
        }

        FocusRing {
            shown: root.ring
        }

        MouseArea {
            id: area
            anchors.fill: parent
            drag { target: plate; axis: Drag.XAxis; minimumX: -root.width; maximumX: 0 }

            property bool dragged: false

            onPressed: dragged = false
            onPositionChanged: dragged = dragged || drag.active
            onReleased: {
                if (!dragged)
                    return
                if (plate.x < -root.width * 0.6)
                    root.deleted()
                else if (plate.x < -root.deleteWidth / 2)
                    root.pulled()
                else
                    root.touched()
            }
            onClicked: if (!dragged) root.touched()
        }
    }
}
