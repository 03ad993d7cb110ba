import QtQuick
import Veltramoor

// A line of text to type, bound to a field's state. Of one that is disabled, plate and text fade; the
// placeholder, which says why, does not.
FocusScope {
    id: root

    required property TextField field
    property string label
    property string placeholder
    property bool secret: false
    property int hints: Qt.ImhNoPredictiveText | Qt.ImhNoAutoUppercase

    /// The return key, after the field's own state has had it.
    signal returned()
    /// A tap on the field while it is disabled.
    signal refused()

    Accessible.ignored: !secret
    Accessible.role: Accessible.EditableText
    Accessible.name: label
    Accessible.focusable: true
    Accessible.editable: true
    Accessible.onPressAction: input.forceActiveFocus()

    readonly property rect cursor: input.cursorRectangle

    // Where the place `position` of the text stands at the moment, beyond the field's ends when it is
    // not in view.
    function xOf(position: int): real {
        return input.x + input.positionToRectangle(Math.max(0, position)).x
    }

    height: Theme.touchTarget

    function returnPressed(): void {
        field.returnPressed()
        returned()
    }

    Rectangle {
        anchors.fill: parent
        opacity: root.field.alpha
        radius: 6
        color: Theme.edge
        border { width: input.activeFocus ? 2 : 1; color: input.activeFocus ? Theme.accent : Theme.outline }
    }

    TextInput {
        id: input
        objectName: root.objectName + "Input"
        anchors { fill: parent; leftMargin: 12; rightMargin: 12 }
        enabled: root.field.enabled
        opacity: root.field.alpha
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
        font { family: Theme.fontFamily; pixelSize: Theme.scaled(16) }

        Accessible.role: Accessible.EditableText
        Accessible.name: root.label
        Accessible.focusable: true
        // The toolkit reads out the whole text of an input, secret or not: of a password the field
        // around it is what a reader meets.
        Accessible.ignored: root.secret

        onTextEdited: root.field.text = text
        onActiveFocusChanged: {
            root.field.focusChanged(activeFocus)
            if (activeFocus && root.secret)
                App.announcements.tellFocus(root)
        }
        Keys.onReturnPressed: root.returnPressed()
        Keys.onEnterPressed: root.returnPressed()

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
        objectName: root.objectName + "Placeholder"
        anchors { fill: parent; leftMargin: 12; rightMargin: 12 }
        verticalAlignment: Text.AlignVCenter
        fontSizeMode: Text.HorizontalFit
        minimumPixelSize: 12
        elide: Text.ElideRight
        visible: input.text.length === 0 && input.preeditText.length === 0
        text: root.placeholder
        textFormat: Text.PlainText
        color: root.field.enabled ? Theme.faint : Theme.text
        font { family: Theme.fontFamily; pixelSize: Theme.scaled(16) }
    }

    MouseArea {
        anchors.fill: parent
        enabled: !root.field.enabled
        visible: enabled
        onClicked: root.refused()
    }
}
