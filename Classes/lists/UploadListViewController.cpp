#include "lists/UploadListViewController.h"

#include <fmt/format.h>

#include <utility>

#include "PreferencesKeys.h"
#include "Util/AbsentValue.h"
#include "lists/SortedOrder.h"
#include "platform/SiteConfiguration.h"
#include "settings/UploadDisplaySettingsViewController.h"
#include "site/UserInfo.h"

namespace veltramoor {

UploadListViewController::UploadListViewController(TableViewStyle style)
    : AllListViewController(style) {
  setTitle(tr("Uploaded Torrents"));
  tabBarItem()->set(tr("Uploads"), QStringLiteral("tabbar-upload.png"), 0);
}

// The list outlives a logout, and the next person must not see the last one's.
void UploadListViewController::viewWillAppear() {
  if (owner_ != UserInfo::sharedInstance().username()) {
    rows()->forget();
  }
  AllListViewController::viewWillAppear();
}

void UploadListViewController::loadedTorrents(std::optional<std::vector<Torrent>> page) {
  const Name owner = askedFor_.front();
  askedFor_.pop_front();
  if (owner != UserInfo::sharedInstance().username()) {
    page.reset();
  }
  if (page) {
    owner_ = owner;
  }
  AllListViewController::loadedTorrents(std::move(page));
}

std::optional<Url> UploadListViewController::pageUrl(int page) {
  askedFor_.push_back(UserInfo::sharedInstance().username());
  const std::string order =
      sortedOrder(setting(PreferencesKeys::uploadOrderBy), setting(PreferencesKeys::uploadSortBy));
  return Url::parse(fmt::format("http://{}/user/{}/{}/{}", SiteConfiguration::current().siteHost,
                                formatted(UserInfo::sharedInstance().username()), page, order));
}

QString UploadListViewController::emptyText() const {
  const std::string name = UserInfo::sharedInstance().username().value_or("");
  return name.empty() || name == "Anonymous"
             ? tr("Nobody is signed in. Log out, then sign in to see your uploads.")
             : tr("You have uploaded nothing yet.");
}

std::shared_ptr<ViewController> UploadListViewController::displaySettings() const {
  return UploadDisplaySettingsViewController::sharedInstance();
}

}  // namespace veltramoor
