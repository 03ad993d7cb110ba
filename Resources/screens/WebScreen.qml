import QtQuick
import Veltramoor

// A web page screen. The web engine comes with the first page, not with the screen.
FocusScope {
    id: root
    objectName: "webScreen"
    focus: true

    required property WebViewController controller

    Binding {
        target: root.controller.view
        property: "frame"
        value: Qt.rect(0, 0, root.width, root.height)
    }

    Rectangle {
        anchors.fill: parent
        color: Theme.ground
    }

    FocusScope {
        id: place
        anchors { fill: parent; topMargin: root.controller.topInset }
        focus: true

        readonly property WebPage page: root.controller.webPage
        readonly property string error: page ? page.error : ""

        onPageChanged: load()
        Component.onCompleted: load()

        property WebPage drawn: null

        // A new page gets a new view, with a history of its own.
        function load(): void {
            if (page === drawn)
                return
            drawn = page
            drop()
            const obstacle = page ? page.obstacle() : ""
            if (page && obstacle.length === 0)
                view = WebViews.make(shown, page)
            if (page && !view)
                page.reportUnusable(obstacle || qsTr("the web engine is not installed"))
        }

        property Item view: null

        function drop(): void {
            if (view) {
                view.parent = null
                view.destroy()
            }
            view = null
        }
        Component.onDestruction: drop()

        FocusScope {
            id: shown
            objectName: "webPlace"
            anchors.fill: parent
            focus: true
            visible: place.error.length === 0
        }

        Text {
            objectName: "webError"
            anchors.centerIn: parent
            visible: text.length > 0
            width: Math.min(parent.width - 40, Theme.formWidth)
            horizontalAlignment: Text.AlignHCenter
            wrapMode: Text.Wrap
            textFormat: Text.PlainText
            text: place.error
            color: Theme.text
            font { family: Theme.fontFamily; pixelSize: 15 }
            Accessible.role: Accessible.StaticText
            Accessible.name: text
        }
    }
}
