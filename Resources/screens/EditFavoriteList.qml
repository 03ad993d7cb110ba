import QtQuick
import Veltramoor

// The favourite filters: each row is deleted by a swipe to the left and a tap, or by the Delete key.
FocusScope {
    id: root
    objectName: "editFavoriteList"
    focus: true

    required property EditFavoriteListViewController controller

    function remove(row: int): void {
        controller.commitEditingStyle(EditFavoriteListViewController.Delete, row)
    }

    Rectangle {
        anchors.fill: parent
        color: Theme.ground
    }

    ListView {
        id: list
        objectName: "filterTable"
        anchors { fill: parent; topMargin: Theme.barHeight }
        model: root.controller.filters
        focus: true
        activeFocusOnTab: true
        keyNavigationEnabled: true
        highlightMoveDuration: 0
        boundsBehavior: Flickable.StopAtBounds
        currentIndex: -1

        Accessible.role: Accessible.List
        Accessible.name: root.controller.title

        // The key that brought the focus shows where it is.
        Keys.onReleased: event => {
            if ((event.key === Qt.Key_Tab || event.key === Qt.Key_Backtab) && currentIndex < 0 && count > 0)
                currentIndex = Math.max(0, indexAt(1, contentY + 22))
        }
        Keys.onPressed: event => {
            switch (event.key) {
            case Qt.Key_Delete:
            case Qt.Key_Backspace:
                // A key held a moment too long must not take the next ones along.
                if (!event.isAutoRepeat)
                    root.remove(currentIndex)
                break
            case Qt.Key_Home: currentIndex = 0; break
            case Qt.Key_End: currentIndex = count - 1; break
            default: return
            }
            event.accepted = true
        }

        // qmllint disable unqualified
        delegate: FilterRow {
            width: list.width
            onTouched: list.currentIndex = index
            onRemoved: root.remove(index)
        }
        // qmllint enable unqualified
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
}
