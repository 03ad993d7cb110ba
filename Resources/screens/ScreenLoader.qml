import QtQuick
import Veltramoor

// Draws a controller with the interface file that it names; nothing while there is none.
FocusScope {
    id: root

    property ViewController controller

    onControllerChanged: load()
    Component.onCompleted: load()

    property ViewController drawn: null

    function load(): void {
        if (controller === drawn)
            return
        drawn = controller
        if (controller)
            loader.setSource(controller.interfaceFile, { "controller": controller })
        else
            loader.source = ""
    }

    Loader {
        id: loader
        anchors.fill: parent
        focus: true
    }
}
