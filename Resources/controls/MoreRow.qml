import QtQuick
import Veltramoor

// One row of the "More" list.
Pressable {
    id: root

    required property int index
    required property ViewController controller
    readonly property TabBarItem item: controller.tabBarItem

    objectName: "moreRow" + index
    height: 52
    enabled: item.enabled
    activeFocusOnTab: false
    label: item.title
    Accessible.role: Accessible.ListItem

    Rectangle {
        z: -1
        anchors { fill: parent; bottomMargin: 1 }
        color: Theme.row
    }

    FocusRing {
        anchors.margins: 1
        shown: root.ListView.isCurrentItem && root.ListView.view.activeFocus
    }

    Image {
        id: icon
        anchors { left: parent.left; leftMargin: 16; verticalCenter: parent.verticalCenter }
        width: 26
        height: 26
        source: App.imageUrl(root.item.image)
    }

    Text {
        anchors {
            left: icon.right
            leftMargin: 14
            right: chevron.left
            rightMargin: 8
            verticalCenter: parent.verticalCenter
        }
        elide: Text.ElideRight
        text: root.item.title
        textFormat: Text.PlainText
        color: Theme.textStrong
        font { family: Theme.fontFamily; pixelSize: Theme.scaled(17) }
    }

    Image {
        id: chevron
        anchors { right: parent.right; rightMargin: 12; verticalCenter: parent.verticalCenter }
        source: App.imageUrl("chevron-right.png")
    }
}
