import QtQuick
import Veltramoor

// One label or control of a settings screen.
FocusScope {
    id: root

    required property DisplaySettingsPart part
    required property DisplaySettingsViewController controller

    height: loader.height

    Loader {
        id: loader
        width: parent.width
        focus: true
        sourceComponent: {
            switch (root.part.kind) {
            case DisplaySettingsPart.Segments: return segments
            case DisplaySettingsPart.Picker: return picker
            case DisplaySettingsPart.Slider: return slider
            default: return label
            }
        }
    }

    // qmllint disable unqualified
    Component {
        id: label

        Text {
            objectName: root.part.name
            height: root.part.frame.height * App.device.textScale
            verticalAlignment: Text.AlignVCenter
            fontSizeMode: Text.HorizontalFit
            minimumPixelSize: 10
            text: root.part.text
            textFormat: Text.PlainText
            color: Theme.textStrong
            font { family: Theme.fontFamily; pixelSize: Theme.scaled(16) }
        }
    }

    Component {
        id: segments

        Segments {
            objectName: root.part.name
            height: root.part.frame.height * App.device.textScale
            label: root.part.text
            control: root.part.segments
            focus: true
        }
    }

    Component {
        id: picker

        // As high as its wheels, which need more than the part's own height.
        FocusScope {
            objectName: root.part.name
            height: groups.height
            focus: true

            PickerWheel {
                id: groups
                objectName: "groupWheel"
                width: root.width * root.controller.widthForComponent(0) / root.part.frame.width
                label: qsTr("Category")
                names: root.controller.groups
                selected: root.controller.selectedGroup
                focus: true
                KeyNavigation.right: members
                onChosen: row => root.controller.didSelectRow(row, 0)
            }
            PickerWheel {
                id: members
                objectName: "memberWheel"
                x: groups.width
                width: root.width * root.controller.widthForComponent(1) / root.part.frame.width
                label: qsTr("Subcategory")
                names: root.controller.members
                selected: root.controller.selectedMember
                onChosen: row => root.controller.didSelectRow(row, 1)
            }
        }
    }

    Component {
        id: slider

        ValueSlider {
            objectName: root.part.name
            height: root.part.frame.height * App.device.textScale
            label: root.part.text
            slider: root.part.slider
            focus: true
        }
    }
    // qmllint enable unqualified
}
