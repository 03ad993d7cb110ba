import QtQuick
import Veltramoor

// What lies under an alert when the application cannot open.
Rectangle {
    id: root
    objectName: "blank"

    required property ViewController controller

    color: Theme.ground
}
