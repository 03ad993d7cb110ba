import QtQuick
import Veltramoor

// One wheel of a picker: turned by touch, mouse wheel or keys, the row in the band is the chosen one.
// Without a chosen row there is no band.
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
    Accessible.name: label + ": " + (names[selected] ?? qsTr("none"))
    Accessible.focusable: true
    Accessible.onIncreaseAction: turn(1)
    Accessible.onDecreaseAction: turn(-1)

    // A wheel at rest on another row is a choice; one that was turned to the chosen row is not.
    function settle(): void {
        if (list.currentIndex !== root.selected && list.currentIndex >= 0)
            root.chosen(list.currentIndex)
    }
    function follow(): void {
        list.currentIndex = Math.max(0, root.selected)
    }
    // At once: what the wheel held before has nothing to do with it.
    function jump(): void {
        follow()
        list.positionViewAtIndex(list.currentIndex, ListView.SnapPosition)
    }

    onSelectedChanged: follow()
    Component.onCompleted: jump()
    // A screen may be left while its wheel still turns.
    onVisibleChanged: if (!visible && list.moving) settle()
    Component.onDestruction: if (list.moving) settle()

    function turn(by: int): void {
        const row = Math.max(0, Math.min(root.names.length - 1, root.selected + by))
        if (by !== 0 && row !== root.selected && row < root.names.length)
            root.chosen(row)
    }

    Keys.onPressed: event => {
        switch (event.key) {
        case Qt.Key_Up: turn(-1); break
        case Qt.Key_Down: turn(1); break
        case Qt.Key_PageUp: turn(-4); break
        case Qt.Key_PageDown: turn(4); break
        case Qt.Key_Home: turn(-names.length); break
        case Qt.Key_End: turn(names.length); break
        default: return
        }
        event.accepted = true
    }

    Rectangle {
        anchors.fill: parent
        color: Theme.row
        border.color: Theme.divider
    }

    Rectangle {
        objectName: root.objectName + "Band"
        visible: root.selected >= 0
        y: 2 * root.rowHeight
        width: parent.width
        height: root.rowHeight
        color: Theme.accentFaint
    }

    ListView {
        id: list
        objectName: root.objectName + "List"
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
        onModelChanged: root.jump()

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
                font { family: Theme.fontFamily; pixelSize: Theme.scaled(18) }
                fontSizeMode: Text.HorizontalFit
                minimumPixelSize: 10
            }

            MouseArea {
                anchors.fill: parent
                onClicked: {
                    root.forceActiveFocus()
                    // Choosing a group again would lose the member.
                    if (row.index !== root.selected)
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

        WheelSteps {
            id: steps
            pixelsPerStep: root.rowHeight
        }
        onWheel: event => root.turn(steps.take(event))
    }

    FocusRing {
        radius: 4
        shown: root.activeFocus
    }
}
