import QtQuick
import Veltramoor

// Kind, address and credentials of the person's BitTorrent client, and a button that tries them.
FocusScope {
    id: root
    objectName: "serverSettings"
    focus: true

    required property ServerSettingsViewController controller

    // Known before the field that lost the focus hears of it: whether another control took it, or
    // another window, or whether it is free to move on.
    readonly property Item focused: Window.activeFocusItem
    onFocusedChanged: controller.focusTaken = !focused || focused.activeFocusOnTab

    Rectangle {
        anchors.fill: parent
        color: Theme.ground
    }

    FormScroll {
        id: scroll
        objectName: "serverSettingsScroll"
        anchors.fill: parent
        contentHeight: Math.max(root.controller.contentHeight, steps.y + steps.height + 20)

        // Shows the step that was done last, once the form has grown for it.
        Timer {
            id: growing
            interval: 0
            onTriggered: {
                if (steps.latest)
                    scroll.show(steps.latest, 12)
            }
        }

        Connections {
            target: root.controller
            function onScrollToFieldRequested(field: TextField): void {
                for (const shown of [address, port, user, password]) {
                    if (shown.field === field)
                        scroll.show(shown, 30)
                }
            }
        }

        Item {
            id: form
            anchors.horizontalCenter: parent.horizontalCenter
            width: Math.min(scroll.width, Theme.formWidth) - 40

            Segments {
                objectName: "serverClient"
                y: 20
                width: parent.width
                height: 36
                label: qsTr("Client")
                control: root.controller.serverClient
                focus: true
            }

            SetupText {
                id: description
                objectName: "serverDescription"
                y: 68
                width: parent.width
                height: 196
                text: root.controller.serverDescription
            }

            LabelledField {
                id: address
                objectName: "serverAddress"
                y: description.y + description.height + 12
                width: parent.width - port.width - 12
                label: qsTr("Address")
                placeholder: qsTr("192.168.1.2")
                hints: Qt.ImhUrlCharactersOnly | Qt.ImhNoPredictiveText
                field: root.controller.serverAddress
            }
            LabelledField {
                id: port
                objectName: "serverPort"
                anchors.right: parent.right
                y: address.y
                width: 20 + Theme.scaled(64)
                label: qsTr("Port")
                hints: Qt.ImhPreferNumbers
                field: root.controller.serverPort
            }
            LabelledField {
                id: user
                objectName: "serverUser"
                y: address.y + address.height + 10
                width: parent.width
                label: qsTr("User name")
                placeholder: qsTr("None")
                field: root.controller.serverUser
            }
            LabelledField {
                id: password
                objectName: "serverPassword"
                y: user.y + user.height + 10
                width: parent.width
                label: qsTr("Password")
                placeholder: qsTr("None")
                secret: true
                field: root.controller.serverPassword
            }

            TextButton {
                id: test
                objectName: "testButton"
                y: password.y + password.height + 24
                width: parent.width
                label: root.controller.testButton.title
                enabled: root.controller.testButton.enabled
                onClicked: root.controller.test()
            }
            TextButton {
                id: diagnose
                objectName: "diagnoseButton"
                y: test.y + 48
                width: parent.width
                label: root.controller.diagnosis.running ? qsTr("Looking\u2026")
                                                         : root.controller.diagnoseButton.title
                enabled: root.controller.diagnoseButton.enabled
                onClicked: root.controller.diagnose()
            }

            DiagnosisSteps {
                id: steps
                objectName: "diagnosisSteps"
                y: diagnose.y + 56
                width: parent.width
                diagnosis: root.controller.diagnosis
                onHeightChanged: growing.restart()
            }
        }
    }
}
