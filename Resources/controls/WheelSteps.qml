import QtQuick

// Whole steps out of a mouse wheel's notches and out of the many small turns that a touchpad makes
// of one movement.
QtObject {
    id: root

    property real pixelsPerStep: 40
    property real turned: 0

    // Steps downwards that `event` completes; negative for upwards.
    function take(event: var): int {
        const by = event.pixelDelta.y !== 0 ? -event.pixelDelta.y / root.pixelsPerStep
                                            : -event.angleDelta.y / 120
        // What is left of the other direction is not held against this one.
        turned = turned * by < 0 ? by : turned + by
        const steps = Math.trunc(turned)
        turned -= steps
        return steps
    }
}
