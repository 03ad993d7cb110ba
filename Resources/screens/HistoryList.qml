import QtQuick
import Veltramoor

// The names of what was sent, newest first.
FocusScope {
    id: root
    objectName: "historyList"
    focus: true

    required property HistoryListViewController controller

    Rectangle {
        anchors.fill: parent
        color: Theme.ground
    }

    EditableTable {
        id: list
        objectName: "historyTable"
        anchors.fill: parent
        bottomMargin: removed.visible ? removed.height : 0
        model: root.controller.rows
        removal: root.controller.removal

        Accessible.name: root.controller.tabBarItem.title

        // Whether the rows are still those that a delete has left, which are not what is stored: a row
        // deleted then would be another one than it reads.
        property bool outdated: false

        onDeleteAsked: row => {
            if (outdated)
                return
            outdated = true
            root.controller.commitEditingStyle(HistoryListViewController.EditingStyleDelete, row)
            Qt.callLater(readAgain, row)
        }
        function readAgain(deleted: int): void {
            root.controller.reloadHistory()
            outdated = false
            if (keyboardInUse)
                currentIndex = Math.min(deleted, count - 1)
        }
        onMenuAsked: (row, beside, byKey) => root.controller.openMenu(row, beside, byKey)

        // qmllint disable unqualified
        delegate: EditableRow {
            objectName: "historyRow"
            required name
            table: list
            nameFont { family: Theme.fontFamily; pixelSize: 15 }
        }
        // qmllint enable unqualified
    }

    Connections {
        target: root.controller
        function onDeleteChosen(row: int): void { list.deleteRow(row) }
    }

    Text {
        objectName: "listNotice"
        visible: text.length > 0
        anchors.centerIn: parent
        width: Math.min(parent.width - 40, Theme.formWidth)
        horizontalAlignment: Text.AlignHCenter
        wrapMode: Text.WordWrap
        textFormat: Text.PlainText
        text: root.controller.notice
        color: Theme.text
        font { family: Theme.fontFamily; pixelSize: Theme.scaled(15) }
    }

    RemovedLine {
        id: removed
        removal: root.controller.removal
        returnTo: list
    }
}
