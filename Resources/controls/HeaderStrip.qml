import QtQuick
import Veltramoor

// The header of a list: who is signed in, and the list's buttons. Its lower part is a shadow, through
// which touches reach the table.
Item {
    id: root
    objectName: "headerView"

    required property HeaderView header
    /// Height of what a list leaves uncovered.
    property real seenHeight: header.touchHeight

    x: header.frame.x
    y: header.frame.y
    width: header.frame.width
    height: header.frame.height

    Rectangle {
        y: root.header.touchHeight
        width: parent.width
        height: 10
        gradient: Gradient {
            GradientStop { position: 0; color: Theme.shade }
            GradientStop { position: 1; color: "transparent" }
        }
    }

    Rectangle {
        id: strip
        width: parent.width
        height: root.header.touchHeight
        gradient: Gradient {
            GradientStop { position: 0; color: root.header.gradient.top }
            GradientStop { position: 1; color: root.header.gradient.bottom }
        }

        // What no button takes stops here.
        MouseArea {
            anchors.fill: parent
        }

        Rectangle {
            anchors.bottom: parent.bottom
            width: parent.width
            height: 1
            color: Theme.edge
        }

        UserButton {
            id: user
            objectName: "usernameLbl"
            anchors { left: parent.left; leftMargin: 4; right: buttons.left; rightMargin: 8 }
            height: root.seenHeight
            name: root.header.usernameLbl.title
            status: root.header.ratioLbl
            onClicked: root.header.viewProfile()
        }

        Row {
            id: buttons
            anchors { right: parent.right; rightMargin: 4 }
            y: (root.seenHeight - height) / 2
            readonly property real side: Math.min(Theme.touchTarget, root.seenHeight)

            IconButton {
                objectName: "filtersBtn"
                label: qsTr("Filters")
                image: "filters.png"
                height: buttons.side
                button: root.header.filtersBtn
                onClicked: root.header.filters()
            }
            IconButton {
                objectName: "searchBtn"
                label: root.header.searchBtn.mark.length > 0
                       ? qsTr("Search settings: %1").arg(root.header.searchBtn.mark) : qsTr("Search settings")
                image: "settings.png"
                height: buttons.side
                button: root.header.searchBtn
                onClicked: root.header.search()
            }
            IconButton {
                objectName: "settingsBtn"
                label: root.header.settingsBtn.mark.length > 0
                       ? qsTr("List settings: %1").arg(root.header.settingsBtn.mark) : qsTr("List settings")
                image: "settings.png"
                height: buttons.side
                button: root.header.settingsBtn
                onClicked: root.header.settings()
            }
            IconButton {
                objectName: "refreshBtn"
                label: qsTr("Refresh")
                image: "refresh.png"
                height: buttons.side
                button: root.header.refreshBtn
                onClicked: root.header.refresh()
            }
        }
    }
}
