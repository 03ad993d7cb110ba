import QtQuick
import Veltramoor

// Category, order and sort of a list. Laid out from the top of the screen, beneath the bar.
FocusScope {
    id: root
    objectName: "displaySettings"
    focus: true

    required property DisplaySettingsViewController controller

    Keys.onEscapePressed: controller.cancel()

    Rectangle {
        anchors.fill: parent
        color: Theme.ground
    }

    Item {
        id: form
        anchors.horizontalCenter: parent.horizontalCenter
        width: Math.min(parent.width, Theme.formWidth)
        height: parent.height

        Text {
            x: 20
            y: 60
            text: qsTr("Order by:")
            color: Theme.textStrong
            font { family: Theme.fontFamily; pixelSize: 16 }
        }
        Segments {
            objectName: "orderControl"
            x: 20
            y: 90
            width: parent.width - 40
            label: qsTr("Order by")
            control: root.controller.order
            focus: true
        }
        Text {
            x: 20
            y: 130
            text: qsTr("Sort:")
            color: Theme.textStrong
            font { family: Theme.fontFamily; pixelSize: 16 }
        }
        Segments {
            objectName: "sortControl"
            x: 20
            y: 160
            width: parent.width - 40
            label: qsTr("Sort")
            control: root.controller.sort
        }

        Row {
            x: 20
            y: 210
            spacing: 0

            PickerWheel {
                objectName: "groupWheel"
                width: (form.width - 40) * 160 / 280
                label: qsTr("Category")
                names: root.controller.groups
                selected: root.controller.selectedGroup
                onChosen: row => root.controller.didSelectRow(row, 0)
            }
            PickerWheel {
                objectName: "memberWheel"
                width: (form.width - 40) * 120 / 280
                label: qsTr("Subcategory")
                names: root.controller.members
                selected: root.controller.selectedMember
                onChosen: row => root.controller.didSelectRow(row, 1)
            }
        }
    }
}
