import QtQuick
import Veltramoor

// A segmented control: one of a few titles, by touch or with the left and right keys.
FocusScope {
    id: root

    required property SegmentedControl control
    property string label

    height: 30
    activeFocusOnTab: true

    Accessible.role: Accessible.Grouping
    Accessible.name: label + ": " + (control.titles[control.selectedSegment] ?? qsTr("none"))
    Accessible.focusable: true

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

    Item {
        Repeater {
            model: root.control.titles

            // qmllint disable unqualified
            Rectangle {
                id: segment

                required property int index
                required property string modelData
                readonly property bool chosen: root.control.selectedSegment === index

                objectName: root.objectName + index
                x: index * width
                width: root.width / root.control.titles.length
                height: root.height
                enabled: root.control.enabledSegments[index]
                color: chosen ? Theme.accent : area.pressed ? Theme.rowPressed : Theme.row
                border.color: Theme.divider
                opacity: enabled ? 1 : 0.4

                Accessible.role: Accessible.RadioButton
                Accessible.name: modelData
                Accessible.checkable: true
                Accessible.checked: chosen
                Accessible.onPressAction: root.control.choose(index)

                Text {
                    anchors { fill: parent; leftMargin: 4; rightMargin: 4 }
                    horizontalAlignment: Text.AlignHCenter
                    verticalAlignment: Text.AlignVCenter
                    fontSizeMode: Text.HorizontalFit
                    minimumPixelSize: 10
                    text: segment.modelData
                    color: segment.chosen ? Theme.accentText : Theme.text
                    font { family: Theme.fontFamily; pixelSize: Theme.scaled(13); bold: true }
                }

                MouseArea {
                    id: area
                    readonly property real beyond: Math.max(0, (Theme.touchTarget - segment.height) / 2)
                    anchors { fill: parent; topMargin: -beyond; bottomMargin: -beyond }
                    onClicked: {
                        root.forceActiveFocus()
                        root.control.choose(segment.index)
                    }
                }
            }
            // qmllint enable unqualified
        }
    }

    FocusRing {
        anchors.margins: -3
        radius: 4
        shown: root.activeFocus
    }
}
