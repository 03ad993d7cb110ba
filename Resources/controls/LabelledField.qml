import QtQuick
import Veltramoor

// A field to type into beneath its name.
FocusScope {
    id: root

    required property TextField field
    property string label
    property alias placeholder: input.placeholder
    property alias secret: input.secret
    property alias hints: input.hints

    height: input.y + input.height

    Text {
        width: parent.width
        elide: Text.ElideRight
        text: root.label
        color: Theme.text
        font { family: Theme.fontFamily; pixelSize: Theme.scaled(14) }
        Accessible.ignored: true
    }

    FormField {
        id: input
        objectName: root.objectName + "Field"
        y: Theme.scaled(20)
        width: parent.width
        label: root.label
        field: root.field
        focus: true
    }
}
