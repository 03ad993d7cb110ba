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
  connect(&notices_, &ListNotices::changed, this, &AllListViewController::noticeChanged);
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
    tellOfOtherSettings();
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
  rememberSettings();
  fetch(listing_->firstPageUrl());
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
  if (page == 0) {
    rememberSettings();
  }
  fetch(listing_->pageUrl(page));
}

void AllListViewController::fetch(std::optional<Url> url) {
  setNotice({});
  notices_.setOfSettings({});
  // Who asks the site anew is to hear of the site, not of a send from before.
  notices_.setOfSend({});
  askedFor_ = url;
  // A refresh now would have the page under way replace the rows and its own page follow it.
  headerView_.refreshBtn()->setEnabled(false);
  fetching_.fetch(std::move(url),
                  [self = sharedController(this)](std::optional<std::vector<Torrent>> torrents,
                                                  const std::optional<PageTrouble>& trouble) {
                    self->loadedTorrents(std::move(torrents), trouble);
                  });
  waitForPages();
}

void AllListViewController::loadedTorrents(std::optional<std::vector<Torrent>> page,
                                           const std::optional<PageTrouble>& trouble) {
  const bool arrived = page.has_value();
  const bool gaveRows = arrived && !page->empty();
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
  tellOfOtherSettings();
  if (!gaveRows) {
    const PageTrouble unknown{.kind = arrived ? PageTrouble::Kind::NoRows
                                              : PageTrouble::Kind::NotReached};
    setNotice(
        ListNotice::ofTrouble(trouble.value_or(unknown), rows_.torrentCount() > 0, emptyText()));
  }
  emit pageLoaded(arrived);
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
  // A dot while something narrows or orders the list.
  const QString choice = QString::fromStdString(listing_->choiceInWords());
  headerView_.settingsBtn()->setMark(choice);
  headerView_.searchBtn()->setMark(choice);
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
  sending_.send(torrent,
                [self = sharedController(this)](const std::optional<std::string>& name,
                                                const std::optional<DiagnosisStep>& failure) {
                  self->downloadedFinished(name, failure);
                });
}

void AllListViewController::downloadedFinished(const std::optional<std::string>& name,
                                               const std::optional<DiagnosisStep>& failure) {
  tableView_.setAllowsSelection(true);
  if (sending_.isWaitedFor()) {
    disableTabs(false);
  }
  if (name) {
    rows_.markDownloaded(*name);
  }
  notices_.setOfSend(failure ? ListNotice::ofFailedSend(*failure) : ListNotice{});
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

void AllListViewController::tellOfOtherSettings() {
  const bool others = rows_.torrents() && rowsAskedFor_ != listing_->firstPageUrl();
  notices_.setOfSettings(others ? ListNotice::ofOtherSettings() : ListNotice{});
}

void AllListViewController::retry() {
  if (rows_.torrentCount() == 0) {
    fetchFirstPage();
  } else {
    fetch(askedFor_);
  }
}

void AllListViewController::didTapNotice() {
  const ListNotice::Tap tap = notices_.current().tap;
  if (tap == ListNotice::Tap::RemoteSettings) {
    notices_.setOfSend({});
    if (showRemoteSettings) {
      showRemoteSettings();
    }
  } else if (tap != ListNotice::Tap::Nothing && !isBusy()) {
    tap == ListNotice::Tap::Refresh ? didRefresh() : retry();
  }
}

}  // namespace veltramoor
