import QtQuick
import Veltramoor

// The one line that a list says of itself; where something can be done about it, a tap does it. Over
// rows it has a plate for both, in an empty list one for what the tap does.
Pressable {
    id: root
    objectName: "listNotice"

    required property AllListViewController controller
    /// Whether there are rows behind it.
    required property bool overRows
    readonly property string text: controller.notice

    readonly property bool takesTap: controller.noticeAction.length > 0

    visible: text.length > 0
    height: words.height
    label: text
    enabled: takesTap
    opacity: 1
    ringRadius: 8
    onClicked: controller.didTapNotice()

    Accessible.role: takesTap ? Accessible.Button : Accessible.StaticText
    Accessible.focusable: takesTap

    component Plate: Rectangle {
        radius: 8
        color: Theme.raised
        border { width: Theme.plateBorder; color: Theme.outline }
    }

    component Line: Text {
        horizontalAlignment: Text.AlignHCenter
        wrapMode: Text.WordWrap
        textFormat: Text.PlainText
        color: Theme.text
        font { family: Theme.fontFamily; pixelSize: Theme.scaled(15) }
        Accessible.ignored: true
    }

    Plate {
        z: -1
        anchors { fill: parent; margins: 2 }
        visible: root.overRows
    }

    Column {
        id: words
        width: parent.width
        padding: root.overRows || root.takesTap ? 12 : 0
        spacing: root.overRows ? 6 : 16

        Line {
            width: words.width - 2 * words.padding
            text: root.controller.noticeText
        }
        Item {
            anchors.horizontalCenter: parent.horizontalCenter
            visible: root.takesTap
            width: action.width + (root.overRows ? 0 : 24)
            height: root.overRows ? action.height : Math.max(Theme.touchTarget, action.height + 16)

            Plate {
                objectName: "noticeButton"
                anchors.fill: parent
                visible: !root.overRows
            }
            Line {
                id: action
                anchors.centerIn: parent
                width: root.overRows ? words.width - 2 * words.padding
                                     : Math.min(implicitWidth, words.width - 2 * words.padding - 24)
                text: root.controller.noticeAction
                color: root.lightened ? Theme.textStrong : Theme.accent
                font.bold: true
            }
        }
    }
}
