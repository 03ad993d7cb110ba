#include "lists/Top100ListViewController.h"

#include <fmt/format.h>

#include "PreferencesKeys.h"
#include "platform/SiteConfiguration.h"
#include "settings/Top100DisplaySettingsViewController.h"

namespace veltramoor {

Top100ListViewController::Top100ListViewController(TableViewStyle style)
    : AllListViewController(style) {
  setTitle(tr("Top 100"));
  tabBarItem()->set(tr("Top 100"), QStringLiteral("tabbar-history.png"), 0);
}

void Top100ListViewController::fetchTop100List() {
  const std::string category = setting(PreferencesKeys::top100Category).value_or("");
  fetch(Url::parse(fmt::format("http://{}/top/{}", SiteConfiguration::current().siteHost,
                               category.empty() || category == "0" ? "all" : category)));
}

void Top100ListViewController::cellForRowAtIndexPath(int row, TorrentItemTableViewCell* cell) {
  if (!rows()->isLoadMoreRow(row)) {
    AllListViewController::cellForRowAtIndexPath(row, cell);
  }
}

std::shared_ptr<ViewController> Top100ListViewController::displaySettings() const {
  return Top100DisplaySettingsViewController::sharedInstance();
}

}  // namespace veltramoor
