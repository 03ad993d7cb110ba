import QtQuick
import Veltramoor

// A list whose entries are deleted: by a swipe to the left and a tap, by the Delete key, or in a row's
// menu. The newest deletion can be undone for as long as the line below says so.
ListView {
    id: root

    required property RemovalOffer removal

    signal deleteAsked(row: int)
    signal menuAsked(row: int, beside: rect, byKey: bool)

    // The row whose "Delete" button is on show.
    property Item opened: null
    // The ring around the current row is for a person who uses keys.
    property bool keyboardInUse: false

    focus: true
    activeFocusOnTab: true
    keyNavigationEnabled: true
    highlightMoveDuration: 0
    highlightRangeMode: ListView.ApplyRange
    preferredHighlightBegin: 0
    preferredHighlightEnd: height - bottomMargin
    boundsBehavior: Flickable.StopAtBounds
    currentIndex: -1

    Accessible.role: Accessible.List

    function touch(row: int): void {
        keyboardInUse = false
        currentIndex = row
        opened = null
    }
    function deleteRow(row: int): void {
        opened = null
        deleteAsked(row)
    }
    function askForMenu(row: int, beside: rect, byKey: bool): void {
        if (moving)
            return
        opened = null
        menuAsked(row, beside, byKey)
    }
    function askForMenuOfCurrentRow(): void {
        if (currentItem === null)
            return
        const at = currentItem.mapToItem(null, 40, 0)
        askForMenu(currentIndex, Qt.rect(at.x, at.y, 0, currentItem.height), true)
    }

    onMovementStarted: opened = null

    // The key that brought the focus shows where it is.
    Keys.onReleased: event => {
        if ((event.key === Qt.Key_Tab || event.key === Qt.Key_Backtab) && currentIndex < 0 && count > 0) {
            keyboardInUse = true
            currentIndex = Math.max(0, indexAt(1, contentY + 18))
        }
    }
    Keys.onPressed: event => {
        keyboardInUse = true
        if (event.matches(StandardKey.Undo)) {
            removal.undo()
            event.accepted = true
            return
        }
        switch (event.key) {
        case Qt.Key_Home: currentIndex = 0; break
        case Qt.Key_End: currentIndex = count - 1; break
        case Qt.Key_PageDown: currentIndex = Math.min(count - 1, currentIndex + 10); break
        case Qt.Key_PageUp: currentIndex = Math.max(0, currentIndex - 10); break
        case Qt.Key_Menu: askForMenuOfCurrentRow(); break
        case Qt.Key_F10:
            if (!(event.modifiers & Qt.ShiftModifier))
                return
            askForMenuOfCurrentRow()
            break
        case Qt.Key_Delete:
        case Qt.Key_Backspace:
            // A key held a moment too long must not take the next ones along.
            if (currentIndex >= 0 && !event.isAutoRepeat)
                deleteRow(currentIndex)
            break
        default: return
        }
        event.accepted = true
    }
}
