import QtQuick
import QtQuick.Window
import Veltramoor

// A form that scrolls where the window is too low for it, or a keyboard covers its foot. The control
// that gets the focus comes into view.
Flickable {
    id: root

    // What of its top lies beneath a bar, and what of its foot beneath the keyboard.
    property real topInset: 0
    readonly property real covered: Math.max(0, mapToItem(null, 0, height).y + App.device.keyboardCover
                                                - Window.height)
    readonly property Item focused: Window.activeFocusItem

    clip: true
    bottomMargin: covered
    boundsBehavior: Flickable.StopAtBounds
    interactive: contentHeight + covered > height

    // Scrolls no further than is needed to show `item`, made higher by `extra`.
    function show(item: Item, extra: real): void {
        const top = item.mapToItem(contentItem, 0, 0).y
        const bottom = top + item.height + extra
        let to = contentY
        if (bottom > to + height - covered)
            to = bottom - height + covered
        if (top < to + topInset)
            to = top - topInset
        scrollTo(to)
    }

    function scrollTo(y: real): void {
        const to = Math.max(0, Math.min(y, contentHeight - height + covered))
        if (to !== contentY) {
            scrolling.to = to
            scrolling.restart()
        }
    }

    // Once everything has its place.
    onFocusedChanged: settling.restart()
    onHeightChanged: settling.restart()
    onCoveredChanged: settling.restart()

    function follow(): void {
        for (let item = focused; item; item = item.parent) {
            if (item === contentItem) {
                show(focused, 0)
                return
            }
        }
    }

    onMovementStarted: scrolling.stop()

    Timer {
        id: settling
        interval: 0
        onTriggered: root.follow()
    }

    NumberAnimation {
        id: scrolling
        target: root
        property: "contentY"
        duration: Theme.motion
    }
}
