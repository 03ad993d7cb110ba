import QtQuick
import Veltramoor

// The favourites: a torrent list, and how far the batch under way has come.
FocusScope {
    id: root
    objectName: "favoriteList"
    focus: true

    required property FavoriteListViewController controller

    TorrentList {
        anchors.fill: parent
        controller: root.controller
    }

    Rectangle {
        objectName: "batchProgress"
        readonly property real part: root.controller.pagesAsked > 0
                                     ? root.controller.pagesDelivered / root.controller.pagesAsked : 0

        y: root.controller.headerView.frame.y + root.controller.headerView.touchHeight - 3
        width: parent.width
        height: 3
        visible: root.controller.pagesDelivered < root.controller.pagesAsked
        color: Theme.edge

        Accessible.role: Accessible.ProgressBar
        Accessible.name: qsTr("%1 of %2 pages").arg(root.controller.pagesDelivered)
                                                .arg(root.controller.pagesAsked)

        Rectangle {
            objectName: "batchProgressDone"
            width: parent.width * parent.part
            height: parent.height
            color: Theme.accent

            Behavior on width {
                NumberAnimation { duration: Theme.motion; easing.type: Easing.OutCubic }
            }
        }
    }
}
