import QtQuick
import Veltramoor

// The alert on show. Most runs show none: what it is drawn with is made when it is needed.
Loader {
    id: root
    objectName: "alertBox"

    required property AlertView alert

    visible: alert.visible
    active: visible
    sourceComponent: AlertContent {
        // qmllint disable unqualified
        alert: root.alert
        // qmllint enable unqualified
    }
}
