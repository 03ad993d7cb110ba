import QtQuick
import Veltramoor

// Never seen for longer than a moment: appearing logs out.
Rectangle {
    id: root
    objectName: "logout"

    required property LogoutViewController controller

    color: Theme.ground
    Accessible.name: controller.title
}
