import QtQuick
import Veltramoor

// Category, order and sort of a list: the controller's parts, laid out from the top of the screen,
// beneath the bar.
FocusScope {
    id: root
    objectName: "displaySettings"
    focus: true

    required property DisplaySettingsViewController controller

    Rectangle {
        anchors.fill: parent
        color: Theme.ground
    }

    FormScroll {
        objectName: "displaySettingsScroll"
        anchors { horizontalCenter: parent.horizontalCenter; top: parent.top; bottom: parent.bottom }
        width: Math.min(parent.width, Theme.formWidth)
        contentHeight: form.childrenRect.y + form.childrenRect.height + 20
        topInset: Theme.barHeight

        Item {
            id: form
            width: parent.width

            // Heights are given for text of the ordinary size, from the bar on.
            function stretched(y: real): real {
                return Theme.barHeight + (y - Theme.barHeight) * App.device.textScale
            }

            Text {
                objectName: "settingsExplanation"
                visible: text.length > 0
                x: 20
                y: 64
                width: form.width - 40
                wrapMode: Text.WordWrap
                text: root.controller.explanation
                textFormat: Text.PlainText
                color: Theme.text
                font { family: Theme.fontFamily; pixelSize: Theme.scaled(15) }
            }

            // In what is left between sort and category.
            Text {
                objectName: "settingsRemark"
                visible: text.length > 0
                x: 20
                y: form.stretched(191)
                width: form.width - 40
                height: Theme.scaled(18)
                verticalAlignment: Text.AlignVCenter
                fontSizeMode: Text.HorizontalFit
                minimumPixelSize: 10
                text: root.controller.remark
                textFormat: Text.PlainText
                color: Theme.text
                font { family: Theme.fontFamily; pixelSize: Theme.scaled(13) }
            }

            Repeater {
                id: parts
                model: root.controller.infoView

                DisplaySettingsPartView {
                    // Places are given for a form of 320 points; a wider one is filled.
                    // qmllint disable unqualified
                    controller: root.controller
                    x: 20 + (part.frame.x - 20) * stretch
                    y: form.stretched(part.frame.y)
                    width: part.frame.width * stretch

                    readonly property real stretch: (form.width - 40) / 280
                    // qmllint enable unqualified
                }
            }
        }
    }

    Component.onCompleted: {
        for (let i = 0; i < parts.count; ++i) {
            const view = parts.itemAt(i) as DisplaySettingsPartView
            if (view.part.kind !== DisplaySettingsPart.Label) {
                view.focus = true
                return
            }
        }
    }
}
