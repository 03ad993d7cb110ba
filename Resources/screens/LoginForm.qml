import QtQuick
import Veltramoor

// Name, password, switches and the login button.
Column {
    id: root
    objectName: "groupView"

    required property LoginViewController controller

    spacing: 8

    FormField {
        objectName: "username"
        width: parent.width
        field: root.controller.username
        label: qsTr("User name")
        placeholder: field.enabled ? qsTr("User name") : qsTr("Anonymous: no name needed")
        onRefused: anonymous.pointOut()
    }

    FormField {
        objectName: "password"
        width: parent.width
        field: root.controller.password
        label: qsTr("Password")
        placeholder: field.enabled ? qsTr("Password") : qsTr("No password needed")
        secret: true
        onRefused: anonymous.pointOut()
        // The next step, which the key itself never takes.
        onReturned: log.forceActiveFocus()
    }

    Toggle {
        id: anonymous
        objectName: "anonymousLogin"
        width: parent.width
        control: root.controller.anonymousLogin
        text: qsTr("Anonymous login")
    }

    Toggle {
        objectName: "automaticLogin"
        width: parent.width
        control: root.controller.automaticLogin
        text: qsTr("Automatic login")
    }

    TextButton {
        id: log
        objectName: "loginBtn"
        focus: true
        width: parent.width
        filled: true
        enabled: root.controller.loginBtn.enabled
        label: qsTr("Log in")
        onClicked: root.controller.login()
    }
}
