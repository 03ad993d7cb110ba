import QtQuick
import Veltramoor

// A segmented control: one of a few titles, by touch or with the left and right keys.
FocusScope {
    id: root

    required property SegmentedControl control
    property string label

    height: 30
    activeFocusOnTab: true

    Accessible.role: Accessible.RadioButton
    Accessible.name: label + ": " + (control.titles[control.selectedSegment] ?? "")

    function step(by: int): void {
        for (let i = control.selectedSegment + by; i >= 0 && i < control.titles.length; i += by) {
            if (control.enabledSegments[i]) {
                control.choose(i)
                return
            }
        }
    }

    Keys.onLeftPressed: step(-1)
    Keys.onRightPressed: step(1)

    Row {
        Repeater {
            model: root.control.titles

            // qmllint disable unqualified
            Rectangle {
                id: segment

                required property int index
                required property string modelData
                readonly property bool chosen: root.control.selectedSegment === index

                objectName: root.objectName + index
                width: root.width / root.control.titles.length
                height: root.height
                color: chosen ? Theme.accent : area.pressed ? Theme.rowPressed : Theme.row
                border.color: Theme.raised
                opacity: root.control.enabledSegments[index] ? 1 : 0.4

                Text {
                    anchors.centerIn: parent
                    text: segment.modelData
                    color: segment.chosen ? "#1a1a1a" : Theme.text
                    font { family: Theme.fontFamily; pixelSize: 13; bold: true }
                }

                MouseArea {
                    id: area
                    anchors { fill: parent; topMargin: -5; bottomMargin: -5 }
                    onClicked: {
                        root.forceActiveFocus()
                        root.control.choose(segment.index)
                    }
                }
            }
            // qmllint enable unqualified
        }
    }

    Rectangle {
        anchors { fill: parent; margins: -3 }
        visible: root.activeFocus
        color: "transparent"
        radius: 4
        border { width: 2; color: Theme.accent }
    }
}
