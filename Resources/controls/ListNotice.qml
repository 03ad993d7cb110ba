import QtQuick
import Veltramoor

// The one line that a list says of itself; where something can be done about it, a tap does it.
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

    Rectangle {
        z: -1
        anchors { fill: parent; margins: 2 }
        visible: root.overRows || root.takesTap
        radius: 8
        color: Theme.raised
    }

    Column {
        id: words
        width: parent.width
        padding: root.overRows || root.takesTap ? 12 : 0
        spacing: 6

        component Line: Text {
            horizontalAlignment: Text.AlignHCenter
            wrapMode: Text.WordWrap
            textFormat: Text.PlainText
            color: Theme.text
            font { family: Theme.fontFamily; pixelSize: 15 }
            Accessible.ignored: true
        }

        Line {
            width: words.width - 2 * words.padding
            text: root.controller.noticeText
        }
        Line {
            visible: root.takesTap
            width: words.width - 2 * words.padding
            text: root.controller.noticeAction
            color: Theme.accent
            font.bold: true
        }
    }
}
