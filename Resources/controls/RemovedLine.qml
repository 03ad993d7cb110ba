import QtQuick
import Veltramoor

// What has just been removed, at the foot of its screen, and the way back.
Rectangle {
    id: root
    objectName: "removedLine"

    required property RemovalOffer removal
    /// What has the focus when this goes with it.
    required property Item returnTo

    anchors { left: parent.left; right: parent.right; bottom: parent.bottom }
    height: Theme.touchTarget + 8
    visible: removal.open
    color: Theme.raised

    Accessible.role: Accessible.AlertMessage
    Accessible.name: removal.text

    // Within its own screen: another one may be on show by now.
    onVisibleChanged: if (!visible && undo.focus) returnTo.focus = true

    // Touches beside the button are not for the rows beneath.
    MouseArea {
        anchors.fill: parent
    }

    Text {
        objectName: "removedText"
        anchors { left: parent.left; leftMargin: 12; right: undo.left; rightMargin: 8; verticalCenter: parent.verticalCenter }
        text: root.removal.text
        textFormat: Text.PlainText
        elide: Text.ElideRight
        maximumLineCount: 1
        color: Theme.textStrong
        font { family: Theme.fontFamily; pixelSize: Theme.scaled(15) }
        Accessible.ignored: true
    }

    TextButton {
        id: undo
        objectName: "undoButton"
        anchors { right: parent.right; rightMargin: 4; verticalCenter: parent.verticalCenter }
        width: 88
        label: qsTr("Undo")
        onClicked: root.removal.undo()
    }
}
