#include "lists/HistoryListViewController.h"

#include "remote/DownloadHistory.h"
#include "toolkit/NavigationController.h"

namespace veltramoor {

HistoryListViewController::HistoryListViewController(TableViewStyle)
    : ViewController(QStringLiteral("HistoryList.qml")) {
  tabBarItem()->set(tr("D/l History"), QStringLiteral("tabbar-snatch.png"), 0);
  reloadHistory();
}

void HistoryListViewController::viewWillAppear() {
  reloadHistory();
  if (navigationController() != nullptr) {
    navigationController()->setNavigationBarHidden(true);
  }
}

void HistoryListViewController::reloadHistory() {
  rows_.setNames(DownloadHistory::names());
  emit noticeChanged();
}

void HistoryListViewController::commitEditingStyle(EditingStyle style, int row) {
  if (style != EditingStyleDelete || row < 0 || row >= rows_.rowCount()) {
    return;
  }
  const std::size_t index = rows_.names().size() - 1 - static_cast<std::size_t>(row);
  if (DownloadHistory::removeAt(index, rows_.names()[index])) {
    rows_.removeRowAndName(row);
  } else {
    reloadHistory();
  }
  emit noticeChanged();
}

QString HistoryListViewController::notice() const {
  return rows_.rowCount() > 0
             ? QString()
             : tr("Nothing sent yet. Tap the arrow of a torrent to send it to your computer.");
}

}  // namespace veltramoor
