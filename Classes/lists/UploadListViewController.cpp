#include "lists/UploadListViewController.h"

#include "lists/listings/UploadListing.h"
#include "settings/UploadDisplaySettingsViewController.h"
#include "site/UserInfo.h"

namespace veltramoor {

UploadListViewController::UploadListViewController(TableViewStyle)
    : AllListViewController(std::make_unique<UploadListing>(), QStringLiteral("TorrentList.qml")) {
  setTitle(tr("Uploaded Torrents"));
  tabBarItem()->set(tr("Uploads"), QStringLiteral("tabbar-upload.png"), 0);
}

void UploadListViewController::viewWillAppear() {
  const std::optional<std::string> name = UserInfo::sharedInstance().username();
  if (name != owner_) {
    // The list outlives a logout, and the next person must not see the last one's.
    ignorePages();
    rows()->forget();
    owner_ = name;
  }
  AllListViewController::viewWillAppear();
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
