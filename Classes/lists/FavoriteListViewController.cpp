#include "lists/FavoriteListViewController.h"

#include <chrono>

#include "lists/EditFavoriteListViewController.h"
#include "settings/FavoriteDisplaySettingsViewController.h"
#include "toolkit/NavigationController.h"

namespace veltramoor {
namespace {

constexpr std::size_t kMostNames = 300;
/// For a page whose filters changed after it was asked for, and which is judged anew on this
/// thread: the screen may be held for 50 ms.
constexpr std::chrono::milliseconds kHold{25};

/// A filter in a sentence.
QString quoted(const std::string& regex) {
  constexpr int kMost = 60;
  const QString text = QString::fromStdString(regex);
  return text.size() > kMost ? text.left(kMost) + QStringLiteral("\u2026") : text;
}

}  // namespace

FavoriteListViewController::FavoriteListViewController(TableViewStyle)
    : AllListViewController(std::make_unique<FavoriteListing>(),
                            QStringLiteral("FavoriteList.qml")),
      batches_([this](FilteredPage page) { show(std::move(page)); }) {
  headerView()->filtersBtn()->setHidden(false);
  setTitle(tr("Favorite Torrents"));
  tabBarItem()->set(tr("Favorites"), QStringLiteral("tabbar-favorites.png"), 1);
}

FavoriteListing& FavoriteListViewController::favorites() const {
  return static_cast<FavoriteListing&>(listing());
}

void FavoriteListViewController::viewWillAppear() {
  reloadHeaderView();
  favorites().setPages(FavoriteListing::storedPages());
  reloadFilters();
  if (navigationController() != nullptr) {
    navigationController()->setNavigationBarHidden(true);
  }
  fetchWhenNeeded();
}

bool FavoriteListViewController::hasBackgroundWork() const {
  return AllListViewController::hasBackgroundWork() || batches_.isBusy();
}

void FavoriteListViewController::fetchFirstPage() {
  rememberSettings();
  fetch(favorites().firstBatch());
}

void FavoriteListViewController::fetchPage(int page) { fetch(favorites().batchAfter(page)); }

void FavoriteListViewController::fetchNextXPages(int count, int startPage) {
  fetch({.start = startPage, .count = count});
}

void FavoriteListViewController::fetch(const PageBatch& batch) {
  if (batches_.outstanding() == 0) {
    latestNames_.clear();
  }
  retrying_ = false;
  batches_.fetch(favorites(), batch, sharedController(this));
  begin();
}

void FavoriteListViewController::retry() {
  const std::vector<int> pages = batches_.failedPages();
  if (pages.empty()) {
    return;
  }
  if (rows()->torrentCount() == 0) {
    rememberSettings();
  }
  // A first batch of which nothing came decides anew whether there is more.
  retrying_ = rows()->torrentCount() > 0;
  latestNames_.clear();
  batches_.fetchPages(favorites(), pages, sharedController(this));
  begin();
}

void FavoriteListViewController::begin() {
  setNotice({});
  // A refresh now would have the pages under way replace the rows and its own follow them.
  headerView()->refreshBtn()->setEnabled(false);
  waitForPages();
  tableView()->setScrollEnabled(false);
  emit progressChanged();
}

void FavoriteListViewController::show(FilteredPage page) {
  std::optional<std::vector<Torrent>> torrents = std::move(page.torrents);
  judged_ = std::move(page);
  loadedTorrents(std::move(torrents));
  judged_ = {};
}

void FavoriteListViewController::loadedTorrents(std::optional<std::vector<Torrent>> page,
                                                const std::optional<PageTrouble>&) {
  const bool arrived = page.has_value();
  clearRefreshed();
  std::vector<Torrent> torrents = std::move(page).value_or(std::vector<Torrent>{});
  const bool noMore = retrying_ ? rows()->noMoreTorrents() : torrents.empty();
  tableView()->setAllowsSelection(true);
  filterData(torrents);
  rows()->setNoMoreTorrents(noMore);
  if (arrived) {
    rows()->append(std::move(torrents));
  }
  rows()->reload();
  emit progressChanged();
  emit pageLoaded(arrived);
  if (batches_.outstanding() == 0) {
    batchEnded();
  }
}

void FavoriteListViewController::filterData(std::vector<Torrent>& page) {
  AllListViewController::filterData(page);
  remember(page);
  // The filters may have changed since the page was asked for.
  const bool current =
      judged_.filters == favorites().filters() && judged_.accepted.size() == page.size();
  const std::vector<bool> accepted =
      current ? std::move(judged_.accepted) : favorites().filters()->acceptedWithin(kHold, page);
  std::size_t row = 0;
  std::erase_if(page, [&](const Torrent&) { return !accepted[row++]; });
}

void FavoriteListViewController::remember(const std::vector<Torrent>& page) {
  for (const Torrent& torrent : page) {
    if (latestNames_.size() < kMostNames) {
      latestNames_.push_back(torrent.name);
    }
  }
}

void FavoriteListViewController::batchEnded() {
  tableView()->setScrollEnabled(true);
  endWait();
  headerView()->refreshBtn()->setEnabled(true);
  setNotice(batchNotice());
  tellOfOtherSettings();
  emit batchLoaded(batches_.failed() < pagesAsked());
}

ListNotice FavoriteListViewController::batchNotice() {
  const int asked = pagesAsked();
  const int failed = batches_.failed();
  if (asked > 0 && failed == asked && rows()->torrentCount() == 0) {
    return ListNotice::ofTrouble(batches_.trouble(), false, emptyText());
  }
  if (filters().empty() && failed == 0 && rows()->torrentCount() == 0) {
    return {.text = tr("There are no filters, so nothing is listed here."),
            .action = tr("Add a filter"),
            .tap = ListNotice::Tap::NewFilter};
  }
  QStringList lines;
  if (failed > 0) {
    lines += tr("%1 of %2 pages did not come. %3")
                 .arg(failed)
                 .arg(asked)
                 .arg(QString::fromStdString(sentenceOf(batches_.trouble())));
  }
  for (const std::string& regex : filters().givenUp()) {
    lines += tr("The filter \"%1\" was given up on: it takes too long.").arg(quoted(regex));
  }
  if (rows()->torrentCount() == 0 && lines.isEmpty()) {
    const std::size_t invalid = filters().invalid().size();
    lines += invalid == filters().size()
                 ? tr("No filter is a valid expression. Tap the filters button to see why.")
                 : tr("No filter accepts a torrent of these pages. Load more, or change the "
                      "filters.");
  }
  return {.text = lines.join(QLatin1Char('\n')),
          .action = failed > 0 ? tr("Tap here to ask for them again.") : QString(),
          .tap = failed > 0 ? ListNotice::Tap::Retry : ListNotice::Tap::Nothing};
}

bool FavoriteListViewController::loadMoreTakesTouches() const {
  return batches_.outstanding() < 2 && AllListViewController::loadMoreTakesTouches();
}

void FavoriteListViewController::didRefresh() {
  tableView()->scrollToTop();
  setRefreshed();
  favorites().retryFilters();
  fetchFirstPage();
}

void FavoriteListViewController::didSettings() {
  if (navigationController() != nullptr) {
    navigationController()->pushViewController(
        FavoriteDisplaySettingsViewController::sharedInstance());
  }
}

void FavoriteListViewController::didFilters() {
  if (navigationController() != nullptr) {
    navigationController()->pushViewController(
        std::make_shared<EditFavoriteListViewController>(TableViewStyle::Plain, latestNames_));
  }
}

void FavoriteListViewController::didTapNotice() {
  if (noticeTap() == ListNotice::Tap::NewFilter) {
    // Where there is none, its screen opens the form by itself.
    didFilters();
  } else {
    AllListViewController::didTapNotice();
  }
}

void FavoriteListViewController::reloadFilters() {
  if (favorites().reloadFilters() && rows()->torrents() && batches_.outstanding() == 0) {
    setNotice({.text = tr("The filters have changed."),
               .action = tr("Tap here to look again."),
               .tap = ListNotice::Tap::Refresh});
  }
}

}  // namespace veltramoor
