#include "lists/Top100ListViewController.h"

#include "lists/listings/Top100Listing.h"
#include "settings/Top100DisplaySettingsViewController.h"

namespace veltramoor {

Top100ListViewController::Top100ListViewController(TableViewStyle)
    : AllListViewController(std::make_unique<Top100Listing>(), QStringLiteral("TorrentList.qml")) {
  setTitle(tr("Top 100"));
  tabBarItem()->set(tr("Top 100"), QStringLiteral("tabbar-history.png"), 0);
}

void Top100ListViewController::fetchTop100List() { fetchFirstPage(); }

void Top100ListViewController::cellForRowAtIndexPath(int row, TorrentItemTableViewCell* cell) {
  if (!rows()->isLoadMoreRow(row)) {
    AllListViewController::cellForRowAtIndexPath(row, cell);
  }
}

std::shared_ptr<ViewController> Top100ListViewController::displaySettings() const {
  return Top100DisplaySettingsViewController::sharedInstance();
}

}  // namespace veltramoor
