import QtQuick
import Veltramoor

// Name and password over the landscape, the donation picture at the foot.
FocusScope {
    id: root
    objectName: "loginFront"

    required property LoginViewController controller

    // The picture covers the screen without being stretched, and is moved up where it is larger than
    // the screen, so that the form has room beneath its lettering. Shares of the picture's height.
    readonly property real letteringTop: 0.12
    readonly property real letteringBottom: 0.265
    readonly property real letteringFoot: letteringY + letteringBottom * background.height
    readonly property real letteringY: Math.min(0, Math.max(height - background.height,
                                                            0.17 * height - letteringTop * background.height))
    // A low window has room for the form alone.
    readonly property bool low: height < 400 || (letteringFoot > Math.max(100, 0.3 * height)
                                                 && letteringFoot + form.height > height)

    Item {
        anchors.fill: parent
        clip: true

        Image {
            id: background
            objectName: "loginBackground"

            readonly property size whole: root.controller.backgroundImage === "loginBackIPad.png"
                                          ? Qt.size(768, 1024)
                                          : root.controller.backgroundImage === "loginBack5.png"
                                            ? Qt.size(320, 568) : Qt.size(320, 480)
            readonly property real cover: Math.max(root.width / whole.width, root.height / whole.height)

            width: whole.width * cover
            height: whole.height * cover
            x: (root.width - width) / 2
            y: root.low ? Math.max(root.height - height, -root.letteringBottom * height) : root.letteringY
            source: App.imageUrl(root.controller.backgroundImage.replace(".png", "@2x.png"))
            smooth: true
            // Large, and seen on this screen alone.
            cache: false
        }
    }

    FormScroll {
        id: scroll
        objectName: "loginScroll"
        anchors.fill: parent
        contentWidth: width
        contentHeight: Math.max(height + root.controller.contentOffset, bottom.y + bottom.height + 12)

        Connections {
            target: root.controller
            function onContentOffsetChanged(): void { scroll.scrollTo(root.controller.contentOffset) }
        }

        Item {
            id: form
            // Beside the button in the corner.
            readonly property real aside: root.low && scroll.width < 520 ? 28 : 0
            x: Math.round((scroll.width - aside - width) / 2)
            y: root.low ? 12 : Math.round(root.letteringFoot)
            width: Math.min(scroll.width - 40 - aside, 400)
            height: column.height

            Column {
                id: column
                width: parent.width
                spacing: 4

                Loader {
                    width: parent.width
                    active: root.controller.site.shown
                    visible: active
                    sourceComponent: SitePanel {
                        width: parent ? parent.width : 0
                        // qmllint disable unqualified
                        site: root.controller.site
                        // qmllint enable unqualified
                    }
                }

                LoginForm {
                    width: parent.width
                    visible: !root.controller.site.shown
                    enabled: visible
                    controller: root.controller
                }

                UnderlinedButton {
                    objectName: "changeSiteButton"
                    anchors.horizontalCenter: parent.horizontalCenter
                    visible: !root.controller.site.shown
                    enabled: root.controller.loginBtn.enabled
                    label: root.controller.site.siteLabel
                    Accessible.name: qsTr("Site %1, change").arg(root.controller.site.siteHost)
                    onClicked: root.controller.site.open()
                }
            }
        }

        Item {
            id: bottom
            readonly property DonateViewController donate: root.controller.donateView
            x: Math.round((scroll.width - donate.frame.width) / 2)
            y: Math.max(donate.frame.y, form.y + form.height + 8)
            width: donate.frame.width
            height: donate.configured ? donate.frame.height : 0

            DonateView {
                anchors.fill: parent
                visible: bottom.donate.configured
                controller: bottom.donate
            }
        }
    }

    Pressable {
        objectName: "infoButton"
        anchors { right: parent.right; top: parent.top; margins: 4 }
        width: Theme.touchTarget
        height: Theme.touchTarget
        label: qsTr("About Veltramoor")
        onClicked: root.controller.toggleInfoView()

        Image {
            anchors.centerIn: parent
            source: App.imageUrl("info.png")
        }
    }
}
