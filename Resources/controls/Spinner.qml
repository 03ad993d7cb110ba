import QtQuick
import Veltramoor

// A wheel of twelve spokes that turns while something is under way; three steady dots for a person who
// wants nothing to move.
Item {
    id: root

    property bool running: false
    property int step: 0

    readonly property bool steady: App.device.reducedMotion

    Row {
        objectName: "steadyDots"
        anchors.centerIn: parent
        spacing: root.width * 0.13
        visible: root.steady

        Repeater {
            model: root.steady ? 3 : 0

            // qmllint disable unqualified
            Rectangle {
                width: root.width * 0.22
                height: width
                radius: width / 2
                color: Theme.textStrong
            }
            // qmllint enable unqualified
        }
    }

    Repeater {
        model: root.steady ? 0 : 12

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
        interval: 80
        repeat: true
        running: root.running && !root.steady
        onTriggered: root.step = (root.step + 1) % 12
    }
}
