#include "lists/AllListViewController.h"

#include <utility>

#include "lists/ImageLoader.h"
#include "lists/listings/RecentListing.h"
#include "platform/SiteConfiguration.h"
#include "settings/RecentDisplaySettingsViewController.h"
#include "shell/overlay/ApplicationWindow.h"
#include "shell/pages/ProfileWebViewController.h"
#include "shell/pages/TorrentWebViewController.h"
#include "site/UserInfo.h"
#include "toolkit/Device.h"
#include "toolkit/Image.h"
#include "toolkit/NavigationController.h"
#include "toolkit/TabBarController.h"

namespace veltramoor {
namespace {

QString text(const std::optional<std::string>& value) {
  return QString::fromStdString(value.value_or(""));
}

}  // namespace

AllListViewController::AllListViewController(TableViewStyle)
    : AllListViewController(std::make_unique<RecentListing>(), QStringLiteral("TorrentList.qml")) {
  setTitle(tr("Recent Torrents"));
  tabBarItem()->set(tr("Recents"), QStringLiteral("tabbar-all.png"), 0);
}

AllListViewController::AllListViewController(std::unique_ptr<Listing> listing,
                                             const QString& interfaceFile)
    : ViewController(interfaceFile),
      listing_(std::move(listing)),
      images_([this](const QString& url) { startImageLoad(url); }) {
  headerView_.setParentDelegate(this);
  headerView_.settingsBtn()->setHidden(false);
  connect(&Device::sharedInstance(), &Device::changed, this, &AllListViewController::loadView);
  connect(&sending_, &ListSending::wentOn, this, [this] { disableTabs(isWaiting()); });
  connect(&loading_, &Wait::wentOn, this, &AllListViewController::goOn);
  connect(&loading_, &Wait::overlayHidden, this, &AllListViewController::loadingHidden);
  loadView();
}

AllListViewController::~AllListViewController() {
  // A wait that ends with the list hides the overlay, and what is half gone must not hear of it.
  disconnect(&loading_, nullptr, this, nullptr);
}

void AllListViewController::loadView() {
  const Device& device = Device::sharedInstance();
  const double tabBarHeight =
      tabBarController() == nullptr ? 0 : tabBarController()->tabBarHeight();
  layout_ = listLayout(device.screenSize(), device.isPad(), device.screenSize().height(),
                       tabBarHeight, searchBar_ != nullptr);
  tableView_.setFrame(layout_.table);
  headerView_.setFrame(layout_.header);
  emit layoutChanged();
}

void AllListViewController::setSearchBar(TextField* bar) {
  searchBar_ = bar;
  loadView();
}

QString AllListViewController::bannerPattern() const {
  return imageUrl(Device::sharedInstance().isPad() ? QStringLiteral("titleBackIPad.png")
                                                   : QStringLiteral("titleBack.png"));
}

void AllListViewController::viewWillAppear() {
  reloadHeaderView();
  if (navigationController() != nullptr) {
    navigationController()->setNavigationBarHidden(true);
  }
  fetchWhenNeeded();
}

void AllListViewController::fetchWhenNeeded() {
  if (rows_.torrents()) {
    return;
  }
  if (isBusy()) {
    waitForPages();
    return;
  }
  fetchFirstPage();
}

void AllListViewController::fetchFirstPage() {
  listing_->setCurrentPage(0);
  fetch(listing_->firstPageUrl());
}

bool AllListViewController::hasBackgroundWork() const {
  return operationQueue_.operationCount() + imageOperationQueue_.operationCount() > 0;
}

void AllListViewController::waitForPages() {
  if (!isOnShow()) {
    return;
  }
  loading_.begin(applicationWindow(), loadingText());
  loading_.offerGoingOn();
  waits_ = true;
  tableView_.setAllowsSelection(false);
  disableTabs(true);
}

void AllListViewController::endWait() {
  tableView_.setAllowsSelection(true);
  // Pages that the person went on from take nothing from the screen that waits now.
  if (waits_) {
    waits_ = false;
    disableTabs(false);
    loading_.end();
  }
}

void AllListViewController::goOn() {
  tableView_.setScrollEnabled(true);
  endWait();
}

void AllListViewController::loadingHidden() {
  if (!isWaiting()) {
    return;
  }
  // Another screen has shown the overlay for itself, and taken it away.
  waitForPages();
  releaseBehind();
}

void AllListViewController::releaseBehind() {
  if (isWaiting() && !isOnShow()) {
    goOn();
  }
}

void AllListViewController::clearRefreshed() {
  if (refreshed_) {
    rows_.clear();
    refreshed_ = false;
  }
}

void AllListViewController::fetchPage(int page) {
  listing_->setCurrentPage(page);
  fetch(listing_->pageUrl(page));
}

void AllListViewController::fetch(std::optional<Url> url) {
  setNotice({});
  // A refresh now would have the page under way replace the rows and its own page follow it.
  headerView_.refreshBtn()->setEnabled(false);
  fetching_.fetch(std::move(url),
                  [self = sharedController(this)](std::optional<std::vector<Torrent>> torrents) {
                    self->loadedTorrents(std::move(torrents));
                  });
  waitForPages();
}

void AllListViewController::loadedTorrents(std::optional<std::vector<Torrent>> page) {
  const bool arrived = page.has_value();
  if (refreshed_) {
    tableView_.setScrollEnabled(true);
  }
  clearRefreshed();
  rows_.setNoMoreTorrents(!arrived || page->size() < Listing::kFullPage);
  endWait();
  headerView_.refreshBtn()->setEnabled(fetching_.underWay() == 0);
  if (arrived) {
    filterData(*page);
    rows_.append(std::move(*page));
  } else {
    lastDate_.reset();
  }
  rows_.reload();
  if (!arrived) {
    setNotice(failureNotice());
  } else if (rows_.torrentCount() == 0) {
    setNotice(emptyText());
  }
  emit pageLoaded(arrived);
}

QString AllListViewController::emptyText() const {
  return tr("No torrents here. Tap refresh, or choose another category.");
}

QString AllListViewController::failureNotice() const {
  return SiteConfiguration::current().siteHost.empty()
             ? tr("No site is set. Start with --site-host, or set site-host in %1.")
                   .arg(QString::fromStdString(SiteConfiguration::defaultFile().string()))
         : rows_.torrentCount() == 0
             ? tr("The site did not answer. Check the connection, then tap refresh.")
             : tr("The next page did not come. Tap refresh to start again.");
}

void AllListViewController::filterData(std::vector<Torrent>& page) {
  lastDate_.reset();
  if (page.empty()) {
    rows_.setNoMoreTorrents(true);
    return;
  }
  lastDate_ = page.back().date;
}

void AllListViewController::didRefresh() {
  tableView_.scrollToTop();
  tableView_.setScrollEnabled(false);
  refreshed_ = true;
  fetchFirstPage();
}

void AllListViewController::didSettings() {
  if (navigationController() != nullptr) {
    navigationController()->pushViewController(displaySettings());
  }
}

std::shared_ptr<ViewController> AllListViewController::displaySettings() const {
  return RecentDisplaySettingsViewController::sharedInstance();
}

void AllListViewController::didSelectProfile(const std::optional<QString>& username) {
  const QString name = username.value_or(text(UserInfo::sharedInstance().username()));
  if (name.isEmpty() || name == QLatin1String("Anonymous")) {
    return;
  }
  if (navigationController() == nullptr) {
    return;
  }
  if (isWaiting()) {
    // The overlay is the profile's from now on.
    goOn();
  }
  openingPage_.begin(applicationWindow(), tr("Loading..."));
  tableView_.setAllowsSelection(false);
  disableTabs(true);
  // The screen on top hides the overlay and lets this list go on.
  navigationController()->pushViewController(std::make_shared<ProfileWebViewController>(
      SiteConfiguration::current().siteUrl("/settings"), sharedController(this)));
}

void AllListViewController::openTorrent(int row) {
  if (opening_) {
    return;
  }
  const Torrent& torrent = (*rows_.torrents())[static_cast<std::size_t>(row)];
  const auto url = SiteConfiguration::current().siteUrl(torrent.detailsUrl);
  const auto self = sharedController(this);
  openingPage_.begin(applicationWindow(), tr("Loading..."));
  tableView_.setAllowsSelection(false);
  // Returns when the page is there; pages of the list may arrive meanwhile.
  opening_ = true;
  const auto details = TorrentWebViewController::open(url, row, self);
  opening_ = false;
  if (!isWaiting()) {
    tableView_.setAllowsSelection(true);
  }
  openingPage_.end();
  if (details != nullptr && navigationController() != nullptr) {
    navigationController()->pushViewController(details);
  }
  releaseBehind();
}

void AllListViewController::reloadHeaderView() {
  const UserInfo& userInfo = UserInfo::sharedInstance();
  headerView_.setRatioLbl(text(userInfo.ratio()));
  headerView_.usernameLbl()->setTitle(text(userInfo.username()));
}

void AllListViewController::didTapDownloadButton(int tag) {
  if (const std::optional<Torrent> torrent = torrentAt(tag)) {
    send(*torrent);
  }
}

std::optional<Torrent> AllListViewController::torrentAt(int row) const {
  return row >= 0 && row < rows_.torrentCount()
             ? std::optional((*rows_.torrents())[static_cast<std::size_t>(row)])
             : std::nullopt;
}

void AllListViewController::whenSent(QObject* receiver,
                                     std::function<void(const std::string& name)> heard) {
  connect(&sending_, &ListSending::sent, receiver, std::move(heard));
}

void AllListViewController::send(const Torrent& torrent) {
  tableView_.setAllowsSelection(true);
  disableTabs(true);
  sending_.send(torrent, [self = sharedController(this)](const std::optional<std::string>& name) {
    self->downloadedFinished(name);
  });
}

void AllListViewController::downloadedFinished(const std::optional<std::string>& name) {
  tableView_.setAllowsSelection(true);
  if (sending_.isWaitedFor()) {
    disableTabs(false);
  }
  if (name) {
    rows_.markDownloaded(*name);
  }
  rows_.reload();
  sending_.ended(name);
}

void AllListViewController::disableTabs(bool disable) {
  if (tabBarController() != nullptr) {
    tabBarController()->setTabsEnabled(!disable);
  }
}

void AllListViewController::resume() {
  if (!isWaiting()) {
    tableView_.setAllowsSelection(true);
    disableTabs(false);
  }
}

void AllListViewController::didSelectRowAtIndexPath(int row) {
  if (!tableView_.allowsSelection() || row < 0) {
    return;
  }
  if (row < rows_.torrentCount()) {
    openTorrent(row);
  } else if (rows_.isLoadMoreRow(row) && loadMoreTakesTouches()) {
    fetchPage(listing_->nextPage());
  }
}

bool AllListViewController::loadMoreTakesTouches() const {
  return operationQueue_.operationCount() < 2;
}

void AllListViewController::cellForRowAtIndexPath(int row, TorrentItemTableViewCell* cell) {
  if (rows_.isLoadMoreRow(row)) {
    loadMoreItem_.setPageLbl(text(lastDate_));
    loadMoreItem_.setUserInteractionEnabled(loadMoreTakesTouches());
    return;
  }
  if (row < 0 || row >= rows_.torrentCount()) {
    return;
  }
  cell->fill((*rows_.torrents())[static_cast<std::size_t>(row)], images_);
  cell->setNeedsDisplay();
}

void AllListViewController::startImageLoad(const QString& url) {
  imageOperationQueue_.addOperation(std::make_shared<ImageLoader>(
      Url::parse(url.toStdString()),
      [self = sharedController(this)](const std::string& loaded, const QImage& image) {
        self->imageReady(loaded, image);
      }));
}

void AllListViewController::imageReady(const std::string& url, const QImage& image) {
  images_.imageReady(url, image);
  rows_.reload();
}

void AllListViewController::setNotice(const QString& message) {
  if (message != notice_) {
    notice_ = message;
    emit noticeChanged();
  }
}

}  // namespace veltramoor
