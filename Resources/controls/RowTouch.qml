import QtQuick

// A row's touches: a tap, and what asks for its menu, a finger held still and the right button.
MouseArea {
    id: root

    signal tapped()
    /// Beside a part of the window.
    signal menuAsked(beside: rect)

    /// Whether the press under way has asked for the menu.
    property bool held: false
    property bool moved: false
    property point began

    acceptedButtons: Qt.LeftButton | Qt.RightButton
    pressAndHoldInterval: 500

    onPressed: mouse => {
        held = false
        moved = false
        began = Qt.point(mouse.x, mouse.y)
    }
    onPositionChanged: mouse => {
        const way = Math.max(Math.abs(mouse.x - began.x), Math.abs(mouse.y - began.y))
        moved = moved || way > drag.threshold
    }
    // Taken, it is no tap any more.
    onPressAndHold: mouse => {
        mouse.accepted = !moved
        if (moved)
            return
        held = true
        ask(mouse)
    }
    onClicked: mouse => {
        if (mouse.button === Qt.RightButton)
            ask(mouse)
        else
            tapped()
    }

    // Clear of the finger.
    function ask(mouse: MouseEvent): void {
        const at = mapToItem(null, mouse.x, mouse.y)
        menuAsked(Qt.rect(at.x, at.y - 12, 0, 24))
    }
}
