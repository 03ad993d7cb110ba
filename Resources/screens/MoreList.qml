import QtQuick
import Veltramoor

// The tabs that do not fit the bar.
FocusScope {
    id: root
    objectName: "moreList"
    focus: true

    required property MoreListController controller

    Rectangle {
        anchors.fill: parent
        color: Theme.ground
    }

    ListView {
        id: list
        objectName: "moreTable"
        anchors { fill: parent; topMargin: Theme.barHeight }
        model: root.controller.overflow
        boundsBehavior: Flickable.StopAtBounds
        focus: true
        activeFocusOnTab: true
        keyNavigationEnabled: true
        highlightMoveDuration: 0
        currentIndex: -1

        Accessible.role: Accessible.List
        Accessible.name: root.controller.title

        function select(event: KeyEvent): void {
            if (!event.isAutoRepeat)
                root.controller.didSelectRowAtIndexPath(currentIndex)
        }

        // The key that brought the focus shows where it is.
        Keys.onReleased: event => {
            if ((event.key === Qt.Key_Tab || event.key === Qt.Key_Backtab) && currentIndex < 0 && count > 0)
                currentIndex = Math.max(0, indexAt(1, contentY + 22))
        }
        Keys.onReturnPressed: event => select(event)
        Keys.onEnterPressed: event => select(event)
        Keys.onSpacePressed: event => select(event)

        delegate: MoreRow {
            width: ListView.view.width
            // qmllint disable unqualified
            onClicked: root.controller.didSelectRowAtIndexPath(index)
            // qmllint enable unqualified
        }
    }
}
