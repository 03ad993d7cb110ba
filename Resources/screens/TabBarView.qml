import QtQuick
import Veltramoor

// Tabs: the selected screen above the bar. A screen is drawn when it is first selected.
FocusScope {
    id: root
    objectName: "tabBarView"
    focus: true

    required property TabBarController controller

    Item {
        id: content
        anchors { left: parent.left; right: parent.right; top: parent.top; bottom: bar.top }

        Repeater {
            model: root.controller.screens

            FocusScope {
                id: place

                required property ViewController controller
                // qmllint disable unqualified
                readonly property bool selected: root.controller.selectedViewController === controller
                // qmllint enable unqualified
                property bool drawn: false

                anchors.fill: parent
                visible: selected
                focus: selected
                onSelectedChanged: if (selected) drawn = true
                Component.onCompleted: if (selected) drawn = true

                ScreenLoader {
                    anchors.fill: parent
                    focus: true
                    controller: place.drawn ? place.controller : null
                }
            }
        }
    }

    TabBar {
        id: bar
        anchors { left: parent.left; right: parent.right; bottom: parent.bottom }
        height: root.controller.tabBarHeight
        visible: height > 0
        controller: root.controller
    }
}
