import QtQuick
import Veltramoor

// A wheel of twelve spokes that turns while something is under way.
Item {
    id: root

    property bool running: false
    property int step: 0

    Repeater {
        model: 12

        // qmllint disable unqualified
        Rectangle {
            required property int index

            x: root.width / 2 - width / 2
            y: 0
            width: root.width / 10
            height: root.height * 0.28
            radius: width / 2
            color: Theme.textStrong
            opacity: 0.25 + 0.75 * ((index - root.step + 12) % 12) / 11
            transform: Rotation {
                origin.x: root.width / 20
                origin.y: root.height / 2
                angle: index * 30
            }
        }
        // qmllint enable unqualified
    }

    Timer {
        interval: App.device.reducedMotion ? 500 : 80
        repeat: true
        running: root.running
        onTriggered: root.step = (root.step + 1) % 12
    }
}
