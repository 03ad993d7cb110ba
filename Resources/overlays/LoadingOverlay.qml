import QtQuick
import Veltramoor

// The box of a loading indicator. It lies over the screen without holding anything back. Once a wait has
// become long, a tap on the box lets the person go on.
RoundedRectView {
    id: root

    required property LoadingIndicator indicator
    // The box below this one, which would cover the hint; or null.
    property LoadingIndicator below: null
    readonly property bool alone: below === null || !below.shown

    visible: indicator.shown
    x: Math.round(indicator.boxFrame.x)
    // A low window has it higher, with its hint in sight.
    y: Math.round(Math.max(4, Math.min(indicator.boxFrame.y, parent.height - height - (alone ? 48 : 4))))
    // A narrow one has it smaller.
    scale: Math.min(1, (parent.width - 8) / width)
    width: indicator.boxFrame.width
    height: indicator.boxFrame.height
    rectColor: Theme.box
    cornerRadius: 8
    opacity: 0.9

    Accessible.role: Accessible.AlertMessage
    Accessible.name: indicator.text + " " + indicator.hint

    // A torrent's page takes every tap while it is waited for.
    readonly property bool offers: indicator.canGoOn && (indicator === App.loadingIndicator
                                                         || App.loadingIndicator.hint.length === 0
                                                         || App.loadingIndicator.canGoOn)

    // Reaches over the hint.
    MouseArea {
        objectName: "goOnButton"
        anchors { fill: parent; topMargin: root.alone ? 0 : -40; bottomMargin: root.alone ? -40 : 0 }
        enabled: root.offers
        visible: enabled
        onClicked: root.indicator.goOn()

        Accessible.role: Accessible.Button
        Accessible.name: root.indicator.hint
        Accessible.onPressAction: root.indicator.goOn()
    }

    // What turns is made when it is to be seen.
    Loader {
        anchors.fill: parent
        active: root.visible
        // qmllint disable unqualified
        sourceComponent: Item {
            Spinner {
                x: root.indicator.wheelFrame.x
                y: root.indicator.wheelFrame.y
                width: root.indicator.wheelFrame.width
                height: root.indicator.wheelFrame.height
                running: root.visible
            }

            Text {
                x: root.indicator.labelFrame.x
                y: root.indicator.labelFrame.y
                width: root.indicator.labelFrame.width
                height: root.indicator.labelFrame.height
                text: root.indicator.text
                textFormat: Text.PlainText
                color: Theme.textStrong
                font { family: Theme.fontFamily; pixelSize: 20 }
            }

            Rectangle {
                visible: hint.text.length > 0 && (root.offers || !root.indicator.canGoOn)
                x: (parent.width - width) / 2
                y: root.alone ? parent.height + 8 : -height - 8
                width: hint.implicitWidth + 20
                height: hint.implicitHeight + 10
                radius: 8
                color: Theme.ground
                border.width: root.offers ? 1 : 0
                border.color: root.rectColor

                Text {
                    id: hint
                    objectName: "loadingHint"
                    anchors.centerIn: parent
                    text: root.indicator.hint
                    textFormat: Text.PlainText
                    color: Theme.text
                    font { family: Theme.fontFamily; pixelSize: Theme.scaled(14) }
                }
            }
        }
        // qmllint enable unqualified
    }
}
