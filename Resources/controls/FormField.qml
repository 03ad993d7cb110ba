import QtQuick
import Veltramoor

// A line of text to type, bound to a field's state.
FocusScope {
    id: root

    required property TextField field
    property string label
    property string placeholder
    property bool secret: false
    property int hints: Qt.ImhNoPredictiveText | Qt.ImhNoAutoUppercase

    readonly property rect cursor: input.cursorRectangle

    // Where the place `position` of the text stands at the moment, beyond the field's ends when it is
    // not in view.
    function xOf(position: int): real {
        return input.x + input.positionToRectangle(Math.max(0, position)).x
    }

    height: Theme.touchTarget
    enabled: field.enabled
    opacity: field.alpha

    Rectangle {
        anchors.fill: parent
        radius: 6
        color: Theme.edge
        border { width: input.activeFocus ? 2 : 1; color: input.activeFocus ? Theme.accent : Theme.outline }
    }

    TextInput {
        id: input
        objectName: root.objectName + "Input"
        anchors { fill: parent; leftMargin: 12; rightMargin: 12 }
        verticalAlignment: TextInput.AlignVCenter
        clip: true
        focus: true
        activeFocusOnTab: true
        selectByMouse: true
        color: Theme.textStrong
        selectionColor: Theme.accent
        selectedTextColor: Theme.accentText
        echoMode: root.secret ? TextInput.Password : TextInput.Normal
        inputMethodHints: root.hints | (root.secret ? Qt.ImhSensitiveData | Qt.ImhHiddenText : 0)
        font { family: Theme.fontFamily; pixelSize: 16 }

        // Of what can be edited the whole text would be read out, secret or not.
        Accessible.role: root.secret ? Accessible.StaticText : Accessible.EditableText
        Accessible.name: root.label
        Accessible.focusable: true

        onTextEdited: root.field.text = text
        onActiveFocusChanged: root.field.focusChanged(activeFocus)
        Keys.onReturnPressed: root.field.returnPressed()
        Keys.onEnterPressed: root.field.returnPressed()

        function follow(): void {
            if (text !== root.field.text)
                text = root.field.text
        }
        Component.onCompleted: follow()

        Connections {
            target: root.field
            function onChanged(): void { input.follow() }
            function onEditingChanged(): void {
                if (root.field.editing !== input.activeFocus) {
                    if (root.field.editing)
                        input.forceActiveFocus()
                    else
                        input.focus = false
                }
            }
        }
    }

    Text {
        anchors { left: parent.left; leftMargin: 12; verticalCenter: parent.verticalCenter }
        visible: input.text.length === 0 && input.preeditText.length === 0
        text: root.placeholder
        textFormat: Text.PlainText
        color: Theme.faint
        font { family: Theme.fontFamily; pixelSize: 16 }
    }
}
