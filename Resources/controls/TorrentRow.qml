import QtQuick
import Veltramoor

// One row of a torrent list: a torrent painted in one pass with its send button, or the row that asks
// for more. Rows are reused, so everything here follows the row that it shows at the moment.
Item {
    id: root
    objectName: "torrentRow"

    required property int index
    required property bool loadMore
    required property int revision
    required property string summary
    required property string name
    required property bool sent
    required property AllListViewController controller
    required property bool keyboardInUse

    signal touched()
    signal menuAsked(beside: rect)

    height: Theme.rowHeight

    function fill(): void { controller.cellForRowAtIndexPath(index, torrentCell) }

    Component.onCompleted: fill()
    onIndexChanged: fill()
    onRevisionChanged: fill()
    onLoadMoreChanged: fill()
    ListView.onReused: fill()

    Accessible.role: Accessible.ListItem
    Accessible.name: summary
    Accessible.selectable: true
    Accessible.selected: ListView.isCurrentItem
    Accessible.focusable: true
    Accessible.onPressAction: controller.didSelectRowAtIndexPath(index)

    readonly property bool loadMoreItem: loadMore && controller.drawsLoadMoreItem
    readonly property bool current: ListView.isCurrentItem && ListView.view.activeFocus
                                    && keyboardInUse

    Rectangle {
        anchors.fill: parent
        color: torrentCell.highlighted ? Theme.rowPressed : "transparent"
    }

    FlatTableViewCellView {
        objectName: "torrentCell"
        anchors.fill: parent
        visible: !root.loadMoreItem
        cell: TorrentItemTableViewCell {
            id: torrentCell
            highlighted: area.pressed && root.controller.tableView.allowsSelection
        }
    }

    LoadMoreItem {
        visible: root.loadMoreItem
        anchors.fill: parent
        item: root.controller.loadMoreItem
        pressed: area.pressed
    }

    RowTouch {
        id: area
        anchors.fill: parent
        onTapped: {
            root.touched()
            root.controller.didSelectRowAtIndexPath(root.index)
        }
        onMenuAsked: beside => root.menuAsked(beside)
    }

    SendButton {
        objectName: "sendButton"
        visible: !root.loadMore
        anchors { right: parent.right; top: parent.top; bottom: parent.bottom }
        plate: torrentCell.highlighted ? Theme.rowPressed : Theme.row
        sent: root.sent
        label: root.loadMore ? "" : (root.sent ? qsTr("Send %1 again") : qsTr("Send %1 to your computer"))
                                    .arg(root.name)
        // Not to be taken back while it has the focus, which leaves together with the row.
        activeFocusOnTab: root.current || activeFocus
        onClicked: root.controller.didTapDownloadButton(root.index)
    }

    FocusRing {
        shown: root.current
    }
}
