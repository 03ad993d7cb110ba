import QtQuick
import Veltramoor

// One side's container of a navigation bar, with its buttons at their places.
Item {
    id: root

    required property BarItem item

    width: item.width

    Repeater {
        model: root.item

        Pressable {
            id: place

            required property BarButton button

            objectName: button.name
            x: button.x
            width: 50
            // qmllint disable unqualified
            height: root.height
            // qmllint enable unqualified
            label: button.marked ? qsTr("%1, done").arg(button.label) : button.label
            enabled: button.enabled
            visible: !button.hidden
            onClicked: button.click()

            Image {
                anchors.centerIn: parent
                source: App.imageUrl(place.button.image)
            }
            Image {
                objectName: place.button.name + "Mark"
                anchors { right: parent.right; rightMargin: 8; bottom: parent.bottom; bottomMargin: 6 }
                visible: place.button.marked
                source: App.imageUrl("sent.png")
            }
        }
    }
}
