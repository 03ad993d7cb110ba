#include "lists/FavoriteListViewController.h"

#include <fmt/format.h>

#include <algorithm>
#include <numeric>

#include "PreferencesKeys.h"
#include "lists/EditFavoriteListViewController.h"
#include "lists/FilterStore.h"
#include "platform/Preferences.h"
#include "platform/SiteConfiguration.h"
#include "settings/FavoriteDisplaySettingsViewController.h"
#include "toolkit/NavigationController.h"

namespace veltramoor {
namespace {

constexpr int kUsualPages = 5;
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

FavoriteListViewController::FavoriteListViewController(TableViewStyle style)
    : AllListViewController(style, QStringLiteral("FavoriteList.qml")),
      filters_(std::make_shared<FilterSet>(FilterStore::regexes())),
      delivery_([this](FilteredPage page) { show(std::move(page)); }) {
  headerView()->filtersBtn()->setHidden(false);
  setTitle(tr("Favorite Torrents"));
  tabBarItem()->set(tr("Favorites"), QStringLiteral("tabbar-favorites.png"), 1);
}

int FavoriteListViewController::storedPages() {
  const std::string text =
      Preferences::sharedInstance().string(PreferencesKeys::favoritesCount).value_or("");
  return text.empty() ? kUsualPages : std::max(1, QString::fromStdString(text).toInt());
}

void FavoriteListViewController::viewWillAppear() {
  reloadHeaderView();
  numPages_ = storedPages();
  reloadFilters();
  if (navigationController() != nullptr) {
    navigationController()->setNavigationBarHidden(true);
  }
  fetchWhenNeeded();
}

bool FavoriteListViewController::hasBackgroundWork() const {
  return AllListViewController::hasBackgroundWork() || operationQueueMultiple_.operationCount() > 0;
}

std::optional<Url> FavoriteListViewController::urlOf(const std::string& category, int page) {
  const std::string& host = SiteConfiguration::current().siteHost;
  return Url::parse(category.empty() || category == "0"
                        ? fmt::format("http://{}/recent/{}", host, page)
                        : fmt::format("http://{}/browse/{}/{}/3", host, category, page));
}

std::optional<Url> FavoriteListViewController::pageUrl(int page) {
  return urlOf(Preferences::sharedInstance().string(PreferencesKeys::favoriteCategory).value_or(""),
               page);
}

// The current page is the last one asked for, so that each "load more" skips one: 0 to 4, 6 to 10,
// 12 to 16 and so on.
void FavoriteListViewController::fetchFirstPage() {
  fetchNextXPages(numPages_, 0);
  setCurrentPage(numPages_ - 1);
}

void FavoriteListViewController::fetchPage(int page) {
  setCurrentPage(page + numPages_);
  fetchNextXPages(numPages_, page + 1);
}

void FavoriteListViewController::fetchNextXPages(int count, int startPage) {
  std::vector<int> numbers(static_cast<std::size_t>(std::max(count, 1)));
  std::iota(numbers.begin(), numbers.end(), startPage);
  const auto order = std::make_shared<DeliveryOrder>(numbers);
  if (delivery_.outstanding() == 0) {
    failedPages_ = 0;
    latestNames_.clear();
  }
  const int batch = delivery_.begin(static_cast<int>(numbers.size()));
  setNotice({});
  // A refresh now would have the pages under way replace the rows and its own follow them.
  headerView()->refreshBtn()->setEnabled(false);
  waitForPages();
  tableView()->setScrollEnabled(false);
  emit progressChanged();
  for (const int page : numbers) {
    fetchPage(page, batch, {order, page, page == startPage ? kNoPage : page - 1});
  }
}

void FavoriteListViewController::fetchPage(int page, int batch, DeliveryPlace place) {
  operationQueueMultiple_.addOperation(std::make_shared<FilterFetchPage>(
      pageUrl(page), filters_,
      [self = sharedController(this), batch](FilteredPage filtered) {
        self->delivery_.deliver(batch, std::move(filtered));
      },
      std::move(place)));
}

void FavoriteListViewController::show(FilteredPage page) {
  std::optional<std::vector<Torrent>> torrents = std::move(page.torrents);
  judged_ = std::move(page);
  loadedTorrents(std::move(torrents));
  judged_ = {};
}

void FavoriteListViewController::loadedTorrents(std::optional<std::vector<Torrent>> page) {
  const bool arrived = page.has_value();
  failedPages_ += arrived ? 0 : 1;
  clearRefreshed();
  std::vector<Torrent> torrents = std::move(page).value_or(std::vector<Torrent>{});
  rows()->setNoMoreTorrents(torrents.empty());
  tableView()->setAllowsSelection(true);
  filterData(torrents);
  if (arrived) {
    rows()->append(std::move(torrents));
  }
  rows()->reload();
  emit progressChanged();
  emit pageLoaded(arrived);
  if (delivery_.outstanding() == 0) {
    batchEnded();
  }
}

void FavoriteListViewController::filterData(std::vector<Torrent>& page) {
  AllListViewController::filterData(page);
  remember(page);
  // The filters may have changed since the page was asked for.
  const bool current = judged_.filters == filters_ && judged_.accepted.size() == page.size();
  const std::vector<bool> accepted =
      current ? std::move(judged_.accepted) : filters_->acceptedWithin(kHold, page);
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
  emit batchLoaded(failedPages_ < pagesAsked());
}

QString FavoriteListViewController::batchNotice() {
  const int asked = pagesAsked();
  if (asked > 0 && failedPages_ == asked) {
    return failureNotice();
  }
  QStringList lines;
  if (failedPages_ > 0) {
    lines +=
        tr("%1 of %2 pages did not come. Tap refresh to start again.").arg(failedPages_).arg(asked);
  }
  for (const std::string& regex : filters_->givenUp()) {
    lines += tr("The filter \"%1\" was given up on: it takes too long.").arg(quoted(regex));
  }
  if (rows()->torrentCount() == 0 && lines.isEmpty()) {
    const std::size_t invalid = filters_->invalid().size();
    lines += filters_->empty() ? tr("There are no filters. Tap the filters button to add one.")
             : invalid == filters_->size()
                 ? tr("No filter is a valid expression. Tap the filters button to see why.")
                 : tr("No filter accepts a torrent of these pages. Load more, or change the "
                      "filters.");
  }
  return lines.join(QLatin1Char('\n'));
}

bool FavoriteListViewController::loadMoreTakesTouches() const {
  return delivery_.outstanding() < 2 && AllListViewController::loadMoreTakesTouches();
}

void FavoriteListViewController::didRefresh() {
  tableView()->scrollToTop();
  setRefreshed();
  // A filter that was given up on, perhaps on a busy machine, gets another chance.
  filters_ = std::make_shared<FilterSet>(filters_->regexes());
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

void FavoriteListViewController::reloadFilters() {
  std::vector<std::string> regexes = FilterStore::regexes();
  if (regexes != filters_->regexes()) {
    filters_ = std::make_shared<FilterSet>(regexes);
    if (rows()->torrents() && delivery_.outstanding() == 0) {
      setNotice(tr("The filters have changed. Tap refresh to look again."));
    }
  }
}

}  // namespace veltramoor
