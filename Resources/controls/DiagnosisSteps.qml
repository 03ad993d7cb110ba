import QtQuick
import Veltramoor

// What a diagnosis has found, a line a step: a tick before what is right, a cross before what fails.
Column {
    id: root

    required property DiagnosisModel diagnosis
    /// The step that was done last; null before the first.
    readonly property Item latest: steps.count > 0 ? steps.itemAt(steps.count - 1) : null

    spacing: 6

    Accessible.role: Accessible.List
    Accessible.name: qsTr("What was found")

    Repeater {
        id: steps
        model: root.diagnosis

        delegate: Item {
            id: step

            required property string text
            required property bool ok
            required property int index

            objectName: "diagnosisStep" + index
            width: root.width // qmllint disable unqualified
            height: words.height

            Accessible.role: Accessible.ListItem
            Accessible.name: (ok ? qsTr("Right: %1") : qsTr("Fails: %1")).arg(text)

            Text {
                width: words.x
                text: step.ok ? "\u2713" : "\u2717"
                textFormat: Text.PlainText
                color: step.ok ? Theme.faint : Theme.trouble
                font { family: Theme.fontFamily; pixelSize: Theme.scaled(15); bold: true }
                Accessible.ignored: true
            }
            Text {
                id: words
                x: Theme.scaled(24)
                width: parent.width - x
                wrapMode: Text.WordWrap
                text: step.text
                textFormat: Text.PlainText
                color: step.ok ? Theme.faint : Theme.textStrong
                font { family: Theme.fontFamily; pixelSize: Theme.scaled(15) }
                Accessible.ignored: true
            }
        }
    }

    Text {
        objectName: "diagnosisVerdict"
        visible: text.length > 0
        width: root.width
        topPadding: 4
        wrapMode: Text.WordWrap
        // The step that failed says it for itself.
        text: root.diagnosis.verdict.length > 0 && lastIsOk ? root.diagnosis.verdict : ""
        readonly property bool lastIsOk: root.diagnosis.lastIsOk
        textFormat: Text.PlainText
        color: Theme.accent
        font { family: Theme.fontFamily; pixelSize: Theme.scaled(15) }
    }
}
