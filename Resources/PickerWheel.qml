import QtQuick
import Veltramoor

// One wheel of a picker: turned by touch, mouse wheel or keys, the middle row is the chosen one.
FocusScope {
    id: root

    required property var names
    required property int selected
    property string label

    signal chosen(int row)

    // Five rows, each high enough to be touched.
    readonly property int rowHeight: 40
    height: 5 * rowHeight
    activeFocusOnTab: true

    Accessible.role: Accessible.ComboBox
    Accessible.name: label + ": " + (names[selected] ?? "")

    // A wheel at rest on another row is a choice; one that was turned to the chosen row is not.
    function settle(): void {
        if (list.currentIndex !== root.selected && list.currentIndex >= 0)
            root.chosen(list.currentIndex)
    }
    function follow(): void {
        if (list.currentIndex !== root.selected) {
            list.currentIndex = root.selected
            list.positionViewAtIndex(root.selected, ListView.SnapPosition)
        }
    }

    onSelectedChanged: follow()
    Component.onCompleted: follow()

    function turn(by: int): void {
        const row = root.selected + by
        if (row >= 0 && row < root.names.length)
            root.chosen(row)
    }

    Keys.onUpPressed: turn(-1)
    Keys.onDownPressed: turn(1)

    Rectangle {
        anchors.fill: parent
        color: Theme.row
        border { width: root.activeFocus ? 2 : 1; color: root.activeFocus ? Theme.accent : Theme.raised }
    }

    Rectangle {
        y: 2 * root.rowHeight
        width: parent.width
        height: root.rowHeight
        color: "#33f0a830"
    }

    ListView {
        id: list
        anchors { fill: parent; margins: 1 }
        clip: true
        model: root.names
        snapMode: ListView.SnapToItem
        highlightRangeMode: ListView.StrictlyEnforceRange
        preferredHighlightBegin: 2 * root.rowHeight
        preferredHighlightEnd: 3 * root.rowHeight
        highlightMoveDuration: Theme.motion
        boundsBehavior: Flickable.StopAtBounds

        onMovementEnded: root.settle()
        onCountChanged: positionViewAtIndex(root.selected, ListView.SnapPosition)

        // qmllint disable unqualified
        delegate: Item {
            id: row

            required property int index
            required property string modelData

            width: list.width
            height: root.rowHeight

            Text {
                anchors { fill: parent; leftMargin: 10; rightMargin: 6 }
                verticalAlignment: Text.AlignVCenter
                text: row.modelData
                elide: Text.ElideRight
                color: row.index === root.selected ? Theme.textStrong : Theme.text
                font { family: Theme.fontFamily; pixelSize: 18 }
                fontSizeMode: Text.HorizontalFit
                minimumPixelSize: 12
            }

            MouseArea {
                anchors.fill: parent
                onClicked: {
                    root.forceActiveFocus()
                    root.chosen(row.index)
                }
            }
        }
        // qmllint enable unqualified
    }

    // One notch is one row; a list by itself would fly past several.
    MouseArea {
        anchors.fill: parent
        acceptedButtons: Qt.NoButton
        onWheel: event => root.turn(event.angleDelta.y < 0 ? 1 : -1)
    }
}
