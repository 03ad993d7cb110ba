import QtQuick
import Veltramoor

// A query to type: black and translucent, with a button that empties it. Return starts the search.
FocusScope {
    id: root
    objectName: "searchBar"

    required property TextField field

    /// The bar has given up the keyboard.
    signal finished()

    Rectangle {
        anchors.fill: parent
        color: Theme.shadeDeep
    }

    Rectangle {
        anchors { fill: parent; leftMargin: 8; rightMargin: 8; topMargin: 5; bottomMargin: 5 }
        radius: 8
        color: Theme.field
        border { width: input.activeFocus ? 2 : 1; color: input.activeFocus ? Theme.accent : Theme.outline }
    }

    // The whole height of the bar is the field's to touch.
    MouseArea {
        anchors.fill: parent
        onPressed: input.forceActiveFocus()
    }

    Image {
        id: magnifier
        anchors { left: parent.left; leftMargin: 15; verticalCenter: parent.verticalCenter }
        width: 18
        height: 18
        source: App.imageUrl("search.png")
    }

    TextInput {
        id: input
        objectName: "searchBarInput"
        anchors {
            left: magnifier.right
            leftMargin: 8
            right: clear.left
            verticalCenter: parent.verticalCenter
        }
        height: root.height - 10
        verticalAlignment: TextInput.AlignVCenter
        clip: true
        focus: true
        activeFocusOnTab: true
        selectByMouse: true
        color: Theme.textStrong
        selectionColor: Theme.accent
        selectedTextColor: Theme.accentText
        inputMethodHints: Qt.ImhNoPredictiveText | Qt.ImhNoAutoUppercase
        EnterKey.type: Qt.EnterKeySearch
        font { family: Theme.fontFamily; pixelSize: Theme.scaled(16) }

        Accessible.role: Accessible.EditableText
        Accessible.name: qsTr("Words to search for")
        Accessible.searchEdit: true

        onTextEdited: root.field.text = text
        onActiveFocusChanged: root.field.focusChanged(activeFocus)
        Keys.onReturnPressed: root.field.returnPressed()
        Keys.onEnterPressed: root.field.returnPressed()

        function follow(): void {
            if (text !== root.field.text)
                text = root.field.text
        }
        Component.onCompleted: {
            follow()
            if (root.field.editing)
                forceActiveFocus()
        }

        Connections {
            target: root.field
            function onChanged(): void { input.follow() }
            function onEditingChanged(): void {
                if (root.field.editing === input.activeFocus)
                    return
                if (root.field.editing)
                    input.forceActiveFocus()
                else
                    root.finished()
            }
        }

        Text {
            anchors { left: parent.left; verticalCenter: parent.verticalCenter }
            visible: input.text.length === 0 && input.preeditText.length === 0
            text: qsTr("Search")
            color: Theme.faint
            font: input.font
        }
    }

    Pressable {
        id: clear
        objectName: "searchBarClear"
        anchors { right: parent.right; rightMargin: 4; verticalCenter: parent.verticalCenter }
        width: Theme.touchTarget
        height: Theme.touchTarget
        visible: input.text.length > 0
        label: qsTr("Clear the search text")
        onClicked: {
            root.field.text = ""
            input.forceActiveFocus()
        }

        Image {
            anchors.centerIn: parent
            width: 16
            height: 16
            source: App.imageUrl("close.png")
        }
    }
}
