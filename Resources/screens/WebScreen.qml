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

        // What the keys go to: the page, or the way out of an error.
        onErrorChanged: (error.length > 0 ? again : shown).focus = true

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

        Column {
            anchors.centerIn: parent
            width: Math.min(parent.width - 40, Theme.formWidth)
            spacing: 20
            visible: place.error.length > 0

            Text {
                objectName: "webError"
                width: parent.width
                horizontalAlignment: Text.AlignHCenter
                wrapMode: Text.Wrap
                // An address may be longer than the screen is high.
                elide: Text.ElideRight
                maximumLineCount: 8
                textFormat: Text.PlainText
                text: place.error
                color: Theme.text
                font { family: Theme.fontFamily; pixelSize: Theme.scaled(15) }
                Accessible.role: Accessible.StaticText
                Accessible.name: text
            }

            TextButton {
                id: again
                objectName: "webTryAgain"
                anchors.horizontalCenter: parent.horizontalCenter
                width: 160
                label: qsTr("Try again")
                onClicked: root.controller.tryAgain()
            }
        }
    }
}
