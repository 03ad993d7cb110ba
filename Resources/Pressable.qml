import QtQuick
import Veltramoor

// What every button is made of: touch, keyboard, focus ring, hover, accessibility.
Item {
    id: root

    property string label
    property bool pressed: area.pressed
    readonly property bool hovered: area.containsMouse
    property real ringRadius: 6

    signal clicked()

    activeFocusOnTab: true
    opacity: enabled ? 1 : 0.4

    Accessible.role: Accessible.Button
    Accessible.name: root.label
    Accessible.focusable: true
    Accessible.onPressAction: root.clicked()

    Keys.onReturnPressed: root.clicked()
    Keys.onEnterPressed: root.clicked()
    Keys.onSpacePressed: root.clicked()

    Rectangle {
        anchors.fill: parent
        anchors.margins: 2
        radius: root.ringRadius
        color: root.pressed ? "#40ffffff" : root.hovered ? "#1affffff" : "transparent"
        border.width: root.activeFocus ? 2 : 0
        border.color: Theme.accent
    }

    MouseArea {
        id: area
        anchors.fill: parent
        hoverEnabled: true
        onClicked: root.clicked()
    }
}
