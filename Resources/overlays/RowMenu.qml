import QtQuick
import Veltramoor

// The menu on show, beside what asked for it and wholly inside the window. Nothing beneath takes input;
// a touch beside it closes it.
FocusScope {
    id: root
    objectName: "rowMenu"
    focus: true

    readonly property PopupMenu menu: App.menu

    readonly property int margin: 4
    readonly property rect beside: menu.beside
    property real widest: 0
    // Of the entry that has the focus; -1 for none.
    property int current: -1

    function go(entry: int): void {
        const count = entries.count
        current = (entry + count) % count
        const item = entries.itemAt(current)
        item.forceActiveFocus()
        scroll.contentY = Math.max(item.y + item.height - scroll.height, Math.min(scroll.contentY, item.y))
    }

    Component.onCompleted: if (menu.byKey) go(0)

    Keys.onPressed: event => {
        switch (event.key) {
        case Qt.Key_Down:
        case Qt.Key_Tab: go(current + 1); break
        case Qt.Key_Up:
        case Qt.Key_Backtab: go(Math.max(current, 0) - 1); break
        case Qt.Key_Home: go(0); break
        case Qt.Key_End: go(-1); break
        }
        // Whatever it is, it is not for what lies beneath.
        event.accepted = true
    }

    MouseArea {
        objectName: "besideMenu"
        anchors.fill: parent
        acceptedButtons: Qt.AllButtons
        hoverEnabled: true
        onPressed: root.menu.close()
        onWheel: wheel => wheel.accepted = true
    }

    FocusScope {
        id: box
        objectName: "menuBox"
        focus: true

        readonly property real below: root.beside.y + root.beside.height

        x: Math.max(root.margin, Math.min(root.beside.x, root.width - width - root.margin))
        y: Math.max(root.margin, below + height + root.margin <= root.height
                                 ? below : Math.min(root.beside.y, root.height - root.margin) - height)
        width: Math.min(root.widest + 40, root.width - 2 * root.margin)
        height: Math.min(scroll.contentHeight + 8, root.height - 2 * root.margin)

        Accessible.role: Accessible.PopupMenu
        Accessible.name: root.menu.title
        Accessible.focusable: true

        Rectangle {
            anchors.fill: parent
            radius: 8
            color: Theme.raised
            border.color: Theme.outline
        }

        Flickable {
            id: scroll
            anchors { fill: parent; margins: 4 }
            contentHeight: column.height
            boundsBehavior: Flickable.StopAtBounds
            clip: contentHeight > height

            Column {
                id: column
                width: scroll.width

                Repeater {
                    id: entries
                    model: root.menu.entries

                    Pressable {
                        id: entry

                        required property int index
                        required property string modelData

                        objectName: "menuEntry" + index
                        height: Theme.touchTarget
                        label: modelData
                        activeFocusOnTab: false
                        // qmllint disable unqualified
                        width: column.width
                        onClicked: root.menu.choose(index)
                        // qmllint enable unqualified

                        Accessible.role: Accessible.MenuItem

                        Text {
                            anchors { left: parent.left; leftMargin: 12; right: parent.right; rightMargin: 12; verticalCenter: parent.verticalCenter }
                            text: entry.modelData
                            textFormat: Text.PlainText
                            elide: Text.ElideRight
                            color: Theme.textStrong
                            font { family: Theme.fontFamily; pixelSize: Theme.scaled(16) }
                            Accessible.ignored: true
                            // qmllint disable unqualified
                            onImplicitWidthChanged: root.widest = Math.max(root.widest, implicitWidth)
                            // qmllint enable unqualified
                        }
                    }
                }
            }
        }
    }
}
