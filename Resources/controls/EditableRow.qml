import QtQuick
import Veltramoor

// An entry that can be deleted: a swipe to the left brings "Delete" in over the end of the row, and a tap
// there deletes. What it would delete stays to be read in what is left of the row.
Item {
    id: root

    required property int index
    required property EditableTable table
    property string name
    /// What is wrong with the entry; "" for nothing.
    property string reason: ""
    property string spoken: name
    property real leastHeight: Theme.rowHeight
    property font nameFont

    readonly property real deleteWidth: 88
    readonly property bool opened: table.opened === root
    /// How much of the button is to be seen.
    readonly property real uncovered: -slide.x

    width: table.width
    height: Math.max(leastHeight, wrong.visible ? wrong.y + wrong.height + 7 : 0)
    clip: true

    Accessible.role: Accessible.ListItem
    Accessible.name: spoken
    Accessible.focusable: true

    Rectangle {
        id: plate
        width: root.width
        height: root.height - 1
        color: touch.pressed && !touch.drag.active ? Theme.rowPressed : Theme.row

        Text {
            id: label
            objectName: "rowName"
            x: 5
            y: wrong.visible ? 6 : 0
            width: parent.width - x - (root.uncovered > 0 ? root.uncovered + 5 : 0)
            height: wrong.visible ? implicitHeight : parent.height
            verticalAlignment: Text.AlignVCenter
            elide: Text.ElideRight
            maximumLineCount: 1
            text: root.name
            textFormat: Text.PlainText
            color: Theme.text
            font: root.nameFont
        }
        Text {
            id: wrong
            objectName: "rowProblem"
            x: 5
            y: label.y + label.height + 2
            width: parent.width - 10
            visible: text.length > 0
            text: root.reason
            textFormat: Text.PlainText
            wrapMode: Text.WordWrap
            color: Theme.trouble
            font { family: Theme.fontFamily; pixelSize: 13 }
        }

        FocusRing {
            shown: root.table.keyboardInUse && root.table.activeFocus && root.ListView.isCurrentItem
        }
    }

    RowTouch {
        id: touch
        objectName: "rowTouch"
        anchors.fill: parent
        drag { target: touch.held ? null : slide; axis: Drag.XAxis; minimumX: -root.deleteWidth; maximumX: 0 }

        property bool dragged: false

        onPressed: dragged = false
        onPositionChanged: dragged = dragged || drag.active
        onReleased: {
            if (dragged)
                root.table.opened = root.uncovered > root.deleteWidth / 2 ? root : null
        }
        onTapped: if (!dragged) root.table.touch(root.index)
        onMenuAsked: beside => root.table.askForMenu(root.index, beside, false)
    }

    // What a finger drags.
    Item {
        id: slide

        // While a finger holds the row, it decides; then the row rests open or shut.
        Binding on x {
            when: !touch.drag.active
            restoreMode: Binding.RestoreNone
            value: root.opened ? -root.deleteWidth : 0
        }
        Behavior on x {
            enabled: !touch.drag.active
            NumberAnimation { duration: Theme.motion; easing.type: Easing.OutCubic }
        }
    }

    Pressable {
        objectName: "deleteButton"
        x: root.width - root.uncovered
        width: root.deleteWidth
        height: plate.height
        visible: root.uncovered > 0
        activeFocusOnTab: root.opened
        ringColor: Theme.textStrong
        label: qsTr("Delete %1").arg(root.spoken)
        onClicked: root.table.deleteRow(root.index)

        Rectangle {
            z: -1
            anchors.fill: parent
            color: Theme.erase
        }
        Text {
            anchors.centerIn: parent
            text: qsTr("Delete")
            color: Theme.textStrong
            font { family: Theme.fontFamily; pixelSize: 15; bold: true }
        }
    }
}
