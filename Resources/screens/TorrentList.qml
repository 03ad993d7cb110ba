import QtQuick
import Veltramoor

// Every torrent list: banner, table, and the header over the table's top.
FocusScope {
    id: root
    objectName: "torrentList"
    focus: true

    required property AllListViewController controller

    readonly property TableView table: controller.tableView
    readonly property HeaderView header: controller.headerView
    // Nothing to show but the row that asks for more, which then stands at the foot: what the list
    // says of itself comes first.
    readonly property bool bare: controller.rows.loadMoreAlone

    Rectangle {
        anchors.fill: parent
        color: Theme.ground
    }

    ListView {
        id: list
        objectName: "torrentTable"

        x: root.table.frame.x
        y: root.table.frame.y
        width: root.table.frame.width
        height: root.table.frame.height
        // The first row begins where the header's touches end, and the last one ends above what
        // of the table reaches below the screen.
        topMargin: root.bare ? Math.max(root.controller.tableTopInset, height - bottomMargin - Theme.rowHeight)
                             : root.controller.tableTopInset
        bottomMargin: Math.max(0, y + height - root.height)
                      + (notice.visible && !root.bare ? notice.height + 24 : 0)
        onTopMarginChanged: if (root.bare) toTop()
        model: root.controller.rows
        reuseItems: true
        cacheBuffer: 370
        focus: true
        activeFocusOnTab: true
        keyNavigationEnabled: true
        highlightMoveDuration: 0
        interactive: root.table.scrollEnabled
        boundsBehavior: Flickable.StopAtBounds
        currentIndex: -1
        // Keys keep the current row where it can be seen.
        highlightRangeMode: ListView.ApplyRange
        preferredHighlightBegin: topMargin
        preferredHighlightEnd: height - bottomMargin

        Accessible.role: Accessible.List
        Accessible.name: root.controller.title

        // qmllint disable unqualified
        delegate: TorrentRow {
            controller: root.controller
            keyboardInUse: list.keyboardInUse
            width: list.width
            onTouched: {
                list.keyboardInUse = false
                list.currentIndex = index
            }
            onMenuAsked: beside => {
                if (!list.moving)
                    root.controller.menu.open(index, beside, false)
            }
        }
        // qmllint enable unqualified

        // The ring around the current row is for a person who uses keys.
        property bool keyboardInUse: false

        Keys.onReturnPressed: event => select(event)
        Keys.onEnterPressed: event => select(event)
        Keys.onSpacePressed: event => {
            if (!event.isAutoRepeat)
                root.controller.didTapDownloadButton(currentIndex)
        }
        Keys.onPressed: event => {
            keyboardInUse = true
            if (goingOn.running)
                goOn()
            if (event.matches(StandardKey.Copy)) {
                root.controller.menu.copyMagnetLink(currentIndex)
                event.accepted = true
                return
            }
            switch (event.key) {
            case Qt.Key_Menu: askForMenu(); break
            case Qt.Key_F10:
                if (!(event.modifiers & Qt.ShiftModifier))
                    return
                askForMenu()
                break
            case Qt.Key_Home: currentIndex = 0; break
            case Qt.Key_End: currentIndex = count - 1; break
            case Qt.Key_PageDown: currentIndex = Math.min(count - 1, currentIndex + 10); break
            case Qt.Key_PageUp: currentIndex = Math.max(0, currentIndex - 10); break
            default: return
            }
            event.accepted = true
        }

        function askForMenu(): void {
            if (currentItem === null)
                return
            const at = currentItem.mapToItem(null, 40, 0)
            root.controller.menu.open(currentIndex, Qt.rect(at.x, at.y, 0, currentItem.height), true)
        }

        function select(event: KeyEvent): void {
            if (!event.isAutoRepeat)
                root.controller.didSelectRowAtIndexPath(currentIndex)
        }

        // The key that brought the focus shows where it is.
        Keys.onReleased: event => {
            if ((event.key === Qt.Key_Tab || event.key === Qt.Key_Backtab) && currentIndex < 0 && count > 0) {
                keyboardInUse = true
                currentIndex = Math.max(0, indexAt(1, contentY + topMargin + 18))
            }
        }

        Connections {
            target: root
            function onBareChanged(): void { settling.restart() }
        }

        // Once everything has its place.
        Timer {
            id: settling
            interval: 0
            onTriggered: list.toTop()
        }

        Connections {
            target: root.table
            function onScrollToTopRequested(): void { list.toTop() }
        }

        // The first row begins beneath the header, also in a list that was emptied and filled again.
        function toTop(): void { contentY = originY - topMargin }
        property bool wasEmpty: true
        onCountChanged: {
            if (wasEmpty && count > 0)
                toTop()
            wasEmpty = count === 0
        }

        // Rows that come before "load more" take it along, as soon as the view has made its own of them:
        // who stood on it goes on at the first of them.
        property int firstNew: -1
        Connections {
            target: root.controller.rows
            function onRowsAboutToBeInserted(parent: var, first: int, last: int): void {
                if (first === list.currentIndex)
                    list.firstNew = first
            }
        }
        onCurrentIndexChanged: if (firstNew >= 0 && currentIndex > firstNew) goingOn.restart()
        Timer {
            id: goingOn
            interval: 0
            onTriggered: list.goOn()
        }
        function goOn(): void {
            goingOn.stop()
            if (firstNew >= 0 && currentIndex > firstNew)
                currentIndex = firstNew
            firstNew = -1
        }

        // The row under a mouse is lit from edge to edge: on a wide window its ends are far apart.
        HoverHandler {
            id: pointer
            acceptedDevices: PointerDevice.Mouse | PointerDevice.TouchPad
        }
        Rectangle {
            id: lit
            objectName: "litRow"
            readonly property Item row: pointer.hovered
                ? list.itemAt(1, pointer.point.position.y + list.contentY) : null
            parent: list.contentItem
            z: 1
            visible: row !== null
            y: row ? row.y : 0
            width: list.width
            height: Theme.rowHeight
            color: Theme.hovered
        }

        // Other rows come in their place: else the view would go on at "load more", the last one.
        Connections {
            target: root.controller.rows
            function onRowsAboutToBeRemoved(parent: var, first: int, last: int): void {
                if (first === 0)
                    list.currentIndex = -1
            }
        }
    }

    ListNotice {
        id: notice
        controller: root.controller
        anchors.horizontalCenter: parent.horizontalCenter
        y: !overRows
           ? (list.y + root.height) / 2 - height / 2
           : root.height - height - 12
        width: Math.min(parent.width - 40, Theme.formWidth)
        overRows: list.count > 0 && !root.bare
        // It goes with the tap, and the focus must be somewhere: here, unless the tap led elsewhere.
        onClicked: {
            if (list.enabled && list.visible)
                list.forceActiveFocus()
        }
    }

    Image {
        objectName: "banner"
        x: root.controller.bannerFrame.x
        y: root.controller.bannerFrame.y
        width: root.controller.bannerFrame.width
        height: root.controller.bannerFrame.height
        source: root.controller.bannerPattern
        fillMode: Image.Tile
        horizontalAlignment: Image.AlignHCenter

        Image {
            objectName: "bannerName"
            anchors.centerIn: parent
            // A low window leaves no room for it.
            visible: parent.height > height + 8
            source: App.imageUrl("titleName.png")
            Accessible.role: Accessible.Graphic
            Accessible.name: qsTr("Veltramoor")
        }
    }

    HeaderStrip {
        header: root.header
        seenHeight: root.controller.searchBar === null
                    ? root.header.touchHeight
                    : root.controller.searchBarFrame.y - root.header.frame.y
    }

    Loader {
        x: root.controller.searchBarFrame.x
        y: root.controller.searchBarFrame.y
        width: root.controller.searchBarFrame.width
        height: root.controller.searchBarFrame.height
        active: root.controller.searchBar !== null

        // qmllint disable unqualified
        sourceComponent: SearchBar {
            field: root.controller.searchBar
            onFinished: list.forceActiveFocus()
        }
        // qmllint enable unqualified
    }

    // Sees every touch of the screen and takes none.
    Item {
        anchors.fill: parent
        z: 1

        PointHandler {
            id: touch
            enabled: root.controller.searchBar !== null
            onActiveChanged: {
                const bar = root.controller.searchBarFrame
                const at = touch.point.pressPosition
                const inBar = at.x >= bar.x && at.x < bar.x + bar.width
                            && at.y >= bar.y && at.y < bar.y + bar.height
                if (active && !inBar)
                    root.controller.touchesBegan()
            }
        }
    }
}
