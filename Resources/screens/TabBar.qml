import QtQuick
import Veltramoor

// The bar at the foot: one slot a tab, as wide as the bar allows up to 120 points.
FocusScope {
    id: root
    objectName: "tabBar"

    required property TabBarController controller
    readonly property int count: controller.bar.count

    Accessible.role: Accessible.PageTabList
    Accessible.name: qsTr("Tabs")

    Rectangle {
        anchors.fill: parent
        color: Theme.bar

        Rectangle {
            width: parent.width
            height: 1
            color: Theme.raised
        }

        MouseArea {
            anchors.fill: parent
        }
    }

    Row {
        anchors.horizontalCenter: parent.horizontalCenter
        height: parent.height

        Repeater {
            id: slots
            model: root.controller.bar

            Pressable {
                id: slot

                required property int index
                required property ViewController controller
                // qmllint disable unqualified
                readonly property bool selected: root.controller.selectedSlot === index
                // A screen chosen from the "More" list stands under its slot, which leads back.
                readonly property bool leadsBack: selected && root.controller.overflowItem !== null
                readonly property TabBarItem item: leadsBack ? root.controller.overflowItem
                                                             : controller.tabBarItem

                objectName: "tab" + index
                width: Math.min(120, root.width / root.count)
                height: root.height
                enabled: controller.tabBarItem.enabled
                label: leadsBack ? qsTr("%1, back to %2").arg(item.title).arg(controller.tabBarItem.title)
                                 : item.title
                Accessible.role: Accessible.PageTab
                Accessible.selected: selected
                onClicked: root.controller.didSelectSlot(index)
                Keys.onLeftPressed: nextItemInFocusChain(false).forceActiveFocus(Qt.BacktabFocusReason)
                Keys.onRightPressed: nextItemInFocusChain(true).forceActiveFocus(Qt.TabFocusReason)
                // qmllint enable unqualified

                Rectangle {
                    anchors { top: parent.top; horizontalCenter: parent.horizontalCenter }
                    width: parent.width - 16
                    height: 2
                    visible: slot.selected
                    color: Theme.accent
                }

                Image {
                    anchors { horizontalCenter: parent.horizontalCenter; top: parent.top; topMargin: 6 }
                    width: 24
                    height: 24
                    source: App.imageUrl(slot.item.image)
                    opacity: slot.selected ? 1 : 0.65
                }

                // One line, or two of smaller letters. A host's name is broken at its dots.
                Text {
                    objectName: "tabLabel"
                    anchors { fill: parent; leftMargin: 2; rightMargin: 2; topMargin: 26 }
                    horizontalAlignment: Text.AlignHCenter
                    verticalAlignment: Text.AlignVCenter
                    wrapMode: Text.Wrap
                    maximumLineCount: 2
                    elide: Text.ElideRight
                    fontSizeMode: Text.Fit
                    minimumPixelSize: 9
                    text: (slot.leadsBack ? "\u2039 " : "") + slot.item.title.replace(/\./g, ".\u200b")
                    textFormat: Text.PlainText
                    color: slot.selected ? Theme.textStrong : Theme.text
                    font {
                        family: Theme.fontFamily
                        // As large as a word of nine letters fits a slot.
                        pixelSize: Math.min(Theme.scaled(11), Math.round(slot.width / 4.6))
                    }
                }
            }
        }
    }
}
