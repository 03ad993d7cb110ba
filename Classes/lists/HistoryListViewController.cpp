#include "lists/HistoryListViewController.h"

#include <QClipboard>
#include <QGuiApplication>

#include "remote/DownloadHistory.h"
#include "toolkit/NavigationController.h"
#include "toolkit/PopupMenu.h"

namespace veltramoor {

HistoryListViewController::HistoryListViewController(TableViewStyle)
    : ViewController(QStringLiteral("HistoryList.qml")), removal_(&DownloadHistory::insertAt) {
  tabBarItem()->set(tr("D/l History"), QStringLiteral("tabbar-snatch.png"), 0);
  connect(&removal_, &RemovalOffer::undone, this, &HistoryListViewController::reloadHistory);
  reloadHistory();
}

void HistoryListViewController::viewWillAppear() {
  reloadHistory();
  if (navigationController() != nullptr) {
    navigationController()->setNavigationBarHidden(true);
  }
}

void HistoryListViewController::viewWillDisappear() { removal_.end(); }

void HistoryListViewController::reloadHistory() {
  rows_.setNames(DownloadHistory::names());
  emit noticeChanged();
}

void HistoryListViewController::commitEditingStyle(EditingStyle style, int row) {
  if (style != EditingStyleDelete || row < 0 || row >= rows_.rowCount()) {
    return;
  }
  const std::size_t index = rows_.names().size() - 1 - static_cast<std::size_t>(row);
  const std::string name = rows_.names()[index];
  if (DownloadHistory::removeAt(index, name)) {
    removal_.make(ArrayPlace::of(rows_.names(), index), name, QString::fromStdString(name));
    rows_.removeRowAndName(row);
  } else {
    reloadHistory();
  }
  emit noticeChanged();
}

void HistoryListViewController::openMenu(int row, const QRectF& beside, bool byKey) {
  if (row < 0 || row >= rows_.rowCount()) {
    return;
  }
  const QString name = rows_.index(row).data(HistoryTableModel::NameRole).toString();
  PopupMenu::sharedInstance().open(
      this, {.beside = beside, .byKey = byKey}, name,
      {{.title = tr("Copy name"),
        .chosen = [name] { QGuiApplication::clipboard()->setText(name); }},
       {.title = tr("Delete"), .chosen = [this, row] { emit deleteChosen(row); }}});
}

QString HistoryListViewController::notice() const {
  return rows_.rowCount() > 0
             ? QString()
             : tr("Nothing sent yet. Tap the arrow of a torrent to send it to your computer.");
}

}  // namespace veltramoor
