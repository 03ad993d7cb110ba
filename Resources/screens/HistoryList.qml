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

    ListView {
        id: list
        objectName: "historyTable"
        anchors.fill: parent
        model: root.controller.rows
        focus: true
        activeFocusOnTab: true
        keyNavigationEnabled: true
        highlightMoveDuration: 0
        highlightRangeMode: ListView.ApplyRange
        preferredHighlightBegin: 0
        preferredHighlightEnd: height
        boundsBehavior: Flickable.StopAtBounds
        currentIndex: -1

        // The row whose "Delete" button is on show, and whether the ring is.
        property Item opened: null
        property bool keyboardInUse: false

        Accessible.role: Accessible.List
        Accessible.name: root.controller.tabBarItem.title

        // Whether the rows are still those that a delete has left, which are not what is stored: a row
        // deleted then would be another one than it reads.
        property bool outdated: false

        function deleteRow(row: int): void {
            opened = null
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

        onMovementStarted: opened = null

        // qmllint disable unqualified
        delegate: HistoryRow {
            width: list.width
            ring: list.keyboardInUse && ListView.isCurrentItem && list.activeFocus
            opened: list.opened === this
            onTouched: {
                list.keyboardInUse = false
                list.currentIndex = index
                list.opened = null
            }
            onPulled: list.opened = this
            onDeleted: list.deleteRow(index)
        }
        // qmllint enable unqualified

        // The key that brought the focus shows where it is.
        Keys.onReleased: event => {
            if ((event.key === Qt.Key_Tab || event.key === Qt.Key_Backtab) && currentIndex < 0 && count > 0) {
                keyboardInUse = true
                currentIndex = Math.max(0, indexAt(1, contentY + 18))
            }
        }
        Keys.onPressed: event => {
            keyboardInUse = true
            switch (event.key) {
            case Qt.Key_Home: currentIndex = 0; break
            case Qt.Key_End: currentIndex = count - 1; break
            case Qt.Key_PageDown: currentIndex = Math.min(count - 1, currentIndex + 10); break
            case Qt.Key_PageUp: currentIndex = Math.max(0, currentIndex - 10); break
            case Qt.Key_Delete:
            case Qt.Key_Backspace: {
                const row = currentIndex
                // A key held a moment too long must not take the next ones along.
                if (row >= 0 && !event.isAutoRepeat)
                    deleteRow(row)
                break
            }
            default: return
            }
            event.accepted = true
        }
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
}
