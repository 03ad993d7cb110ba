import QtQuick
import Veltramoor

// A thumb on a track, moved by touch, keys or mouse wheel.
FocusScope {
    id: root

    required property Slider slider
    property string label

    readonly property real thumb: 28
    readonly property real span: slider.maximum - slider.minimum

    height: Theme.touchTarget
    activeFocusOnTab: true

    Accessible.role: Accessible.Slider
    Accessible.name: label + " " + Math.round(slider.value)
    Accessible.focusable: true
    Accessible.onIncreaseAction: step(1)
    Accessible.onDecreaseAction: step(-1)

    function drag(x: real): void {
        const share = (x - thumb / 2) / (width - thumb)
        slider.moveTo(slider.minimum + span * Math.max(0, Math.min(1, share)))
    }
    // A key or a notch of the wheel is a whole movement.
    function step(by: int): void {
        slider.moveTo(Math.round(slider.value) + by)
        slider.release()
    }

    Keys.onPressed: event => {
        switch (event.key) {
        case Qt.Key_Left: case Qt.Key_Down: step(-1); break
        case Qt.Key_Right: case Qt.Key_Up: step(1); break
        case Qt.Key_PageDown: step(-5); break
        case Qt.Key_PageUp: step(5); break
        case Qt.Key_Home: step(-span); break
        case Qt.Key_End: step(span); break
        default: return
        }
        event.accepted = true
    }

    Rectangle {
        anchors.verticalCenter: parent.verticalCenter
        x: root.thumb / 2
        width: parent.width - root.thumb
        height: 4
        radius: 2
        color: Theme.edge

        Rectangle {
            width: knob.x
            height: parent.height
            radius: 2
            color: Theme.accent
        }
    }

    Rectangle {
        id: knob
        objectName: "sliderThumb"
        x: (root.width - width) * (root.slider.value - root.slider.minimum) / root.span
        anchors.verticalCenter: parent.verticalCenter
        width: root.thumb
        height: root.thumb
        radius: root.thumb / 2
        color: area.pressed ? Theme.accent : Theme.textStrong
    }

    FocusRing {
        anchors.margins: -3
        radius: 4
        shown: root.activeFocus
    }

    MouseArea {
        id: area
        anchors.fill: parent
        preventStealing: true
        onPressed: mouse => {
            root.forceActiveFocus()
            root.drag(mouse.x)
        }
        onPositionChanged: mouse => root.drag(mouse.x)
        // A finger that lets go far away has thought better of it.
        onReleased: mouse => {
            const near = 70
            if (mouse.x > -near && mouse.x < width + near && mouse.y > -near && mouse.y < height + near)
                root.slider.release()
            else
                root.slider.takeBack()
        }
        onCanceled: root.slider.takeBack()

        WheelSteps { id: steps }
        onWheel: event => {
            const by = steps.take(event)
            if (by !== 0)
                root.step(-by)
        }
    }
}
