pragma Singleton
import QtQuick

// Makes the views of web pages. Their context is this object's, which lasts as long as the QML engine:
// a view that is dropped goes a little later, and a script's result that comes before that must still
// find the engine (without one Qt 6.8 ends the program). A loader would take the context away at once.
// The module itself is not imported: Qt 6.4 takes singletons that do for a circle.
QtObject {
    property Component component: null

    // Null when there is no web engine here.
    function make(place: Item, page: QtObject): Item {
        if (component === null)
            component = Qt.createComponent("WebView.qml")
        return component.status === Component.Ready
                ? component.createObject(place, { "page": page }) as Item : null
    }
}
