import QtQuick
import Veltramoor

// What every button is made of: touch, keyboard, focus ring, hover, accessibility.
Item {
    id: root

    property string label
    property bool pressed: area.pressed
    readonly property bool hovered: area.containsMouse
    // Its plate is lighter then, and what is written on it must stay readable.
    readonly property bool lightened: pressed || hovered
    property real ringRadius: 6
    property color ringColor: Theme.accent

    signal clicked()

    activeFocusOnTab: true
    opacity: enabled ? 1 : 0.4

    Accessible.role: Accessible.Button
    Accessible.name: root.label
    Accessible.focusable: true
    Accessible.onPressAction: root.clicked()

    // A key held down presses once, like a finger.
    Keys.onReturnPressed: event => press(event)
    Keys.onEnterPressed: event => press(event)
    Keys.onSpacePressed: event => press(event)

    function press(event: KeyEvent): void {
        if (!event.isAutoRepeat)
            root.clicked()
    }

    // One rectangle for light and ring: there are many of these on a screen.
    FocusRing {
        anchors.margins: 2
        radius: root.ringRadius
        color: root.pressed ? Theme.pressed : root.hovered ? Theme.hovered : "transparent"
        shown: root.activeFocus
        border.color: root.ringColor
    }

    MouseArea {
        id: area
        anchors.fill: parent
        hoverEnabled: true
        onClicked: root.clicked()
    }
}
