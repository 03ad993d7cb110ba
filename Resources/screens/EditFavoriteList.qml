import QtQuick
import Veltramoor

// The favourite filters.
FocusScope {
    id: root
    objectName: "editFavoriteList"
    focus: true

    required property EditFavoriteListViewController controller

    Rectangle {
        anchors.fill: parent
        color: Theme.ground
    }

    EditableTable {
        id: list
        objectName: "filterTable"
        anchors { fill: parent; topMargin: Theme.barHeight }
        bottomMargin: removed.visible ? removed.height : 0
        model: root.controller.filters
        removal: root.controller.removal

        Accessible.name: root.controller.title

        onDeleteAsked: row => {
            root.controller.commitEditingStyle(EditFavoriteListViewController.Delete, row)
        }
        onMenuAsked: (row, beside, byKey) => root.controller.openMenu(row, beside, byKey)

        // qmllint disable unqualified
        delegate: EditableRow {
            id: row
            objectName: "filterRow"

            required property string regex
            required property string problem

            table: list
            leastHeight: Theme.touchTarget
            name: row.regex.length > 0 ? row.regex : qsTr("(empty: accepts every torrent)")
            reason: row.problem.length > 0 ? qsTr("Accepts nothing: %1").arg(row.problem) : ""
            spoken: row.problem.length > 0 ? qsTr("%1, not valid: %2").arg(row.regex).arg(row.problem) : row.name
            nameFont { family: Theme.fontFamily; pixelSize: 12; bold: true }
        }
        // qmllint enable unqualified
    }

    Connections {
        target: root.controller
        function onDeleteChosen(row: int): void { list.deleteRow(row) }
    }

    Text {
        objectName: "noFilters"
        anchors.centerIn: parent
        visible: list.count === 0
        width: Math.min(parent.width - 40, Theme.formWidth)
        horizontalAlignment: Text.AlignHCenter
        wrapMode: Text.WordWrap
        text: qsTr("There are no filters. Tap + to add one.")
        textFormat: Text.PlainText
        color: Theme.text
        font { family: Theme.fontFamily; pixelSize: Theme.scaled(15) }
    }

    RemovedLine {
        id: removed
        removal: root.controller.removal
        returnTo: list
    }
}
