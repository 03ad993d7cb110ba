import QtQuick
import Veltramoor

// Asks which site to use, and offers the demo site.
Column {
    id: root
    objectName: "sitePanel"

    required property SiteChooser site

    spacing: 10

    Text {
        width: parent.width
        wrapMode: Text.WordWrap
        text: root.site.canClose
              ? qsTr("Which torrent index site do you want to use?")
              : qsTr("No site is set yet. Enter the address of the torrent index site that you want to use, or look around on the demo site.")
        color: Theme.textStrong
        font { family: Theme.fontFamily; pixelSize: Theme.scaled(15) }
    }

    FormField {
        objectName: "siteField"
        width: parent.width
        field: root.site.field
        label: qsTr("Site address")
        placeholder: qsTr("Site address, like www.example.org")
        hints: Qt.ImhUrlCharactersOnly | Qt.ImhNoAutoUppercase | Qt.ImhNoPredictiveText
    }

    Text {
        objectName: "siteProblem"
        width: parent.width
        visible: text.length > 0
        wrapMode: Text.Wrap
        text: root.site.problem
        textFormat: Text.PlainText
        color: Theme.trouble
        font { family: Theme.fontFamily; pixelSize: Theme.scaled(14) }
    }

    TextButton {
        objectName: "useSiteButton"
        width: parent.width
        filled: true
        label: qsTr("Use this site")
        onClicked: root.site.use()
    }

    TextButton {
        objectName: "demoSiteButton"
        width: parent.width
        visible: root.site.demoOffered
        label: qsTr("Try the demo site")
        onClicked: root.site.useDemo()
    }

    TextButton {
        objectName: "keepSiteButton"
        width: parent.width
        visible: root.site.canClose
        label: qsTr("Cancel")
        onClicked: root.site.close()
    }
}
