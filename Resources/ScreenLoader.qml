import QtQuick
import Veltramoor

// Draws a controller with the interface file that it names.
FocusScope {
    id: root

    required property ViewController controller

    Component.onCompleted: {
        if (controller)
            loader.setSource(controller.interfaceFile, { "controller": controller })
    }

    Loader {
        id: loader
        anchors.fill: parent
        focus: true
    }
}
