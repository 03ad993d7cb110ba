// The favourites without their views: batches, order, filters, failures.
#include "lists/FavoriteListViewController.h"

#include <QAbstractItemModelTester>
#include <algorithm>

#include "lists/EditFavoriteListViewController.h"
#include "platform/UrlLoading.h"
#include "shell/overlay/LoadingIndicator.h"
#include "support/ScreenTest.h"
#include "toolkit/NavigationController.h"

namespace veltramoor {
namespace {

using namespace std::chrono_literals;
using test::waitFor;

class FavoriteListViewControllerTest : public test::ScreenTest {
 protected:
  FavoriteListViewControllerTest() {
    UrlLoading::sharedInstance().resume();
    QObject::connect(list_.get(), &FavoriteListViewController::batchLoaded, [this] { ++batches_; });
  }
  ~FavoriteListViewControllerTest() override {
    EXPECT_TRUE(waitFor([this] { return !list_->hasBackgroundWork(); }));
    QCoreApplication::processEvents();
  }

  void filters(const std::vector<std::string>& regexes) {
    store_.setArray("Veltramoor_filters", regexes);
    list_->reloadFilters();
  }
  [[nodiscard]] bool waitForBatches(int count) {
    return waitFor([&] { return batches_ == count; });
  }
  /// Paths asked for since the last call, sorted by page.
  [[nodiscard]] std::vector<std::string> asked() {
    std::vector<std::string> targets;
    for (const DemoRequest& request : site_.log()) {
      targets.push_back(request.target);
    }
    std::ranges::sort(targets, {}, [](const std::string& t) { return std::pair(t.size(), t); });
    site_.clearLog();
    return targets;
  }
  [[nodiscard]] static std::vector<std::string> recent(const std::vector<int>& pages) {
    std::vector<std::string> targets;
    for (const int page : pages) {
      targets.push_back("/recent/" + std::to_string(page));
    }
    return targets;
  }
  void loadMore() {
    EXPECT_TRUE(takesTouches());
    list_->didSelectRowAtIndexPath(list_->rows()->torrentCount());
  }
  [[nodiscard]] bool takesTouches() {
    TorrentItemTableViewCell cell;
    list_->cellForRowAtIndexPath(list_->rows()->torrentCount(), &cell);
    return list_->loadMoreItem()->isUserInteractionEnabled();
  }

  VeltramoorAppDelegate delegate_;
  std::shared_ptr<FavoriteListViewController> list_ =
      std::make_shared<FavoriteListViewController>(TableViewStyle::Plain);
  QAbstractItemModelTester tester_{list_->rows(),
                                   QAbstractItemModelTester::FailureReportingMode::Warning};
  int batches_ = 0;
};

TEST_F(FavoriteListViewControllerTest, FetchesBatchesInPageOrderSkippingOnePageBetweenThem) {
  filters({""});
  site_.setFault("/recent/0", Fault{FaultKind::None, 150ms, 0});
  site_.setFault("/recent/3", Fault{FaultKind::None, 80ms, 0});
  std::vector<int> delivered;
  QObject::connect(list_.get(), &FavoriteListViewController::progressChanged,
                   [&] { delivered.push_back(list_->pagesDelivered()); });
  list_->viewWillAppear();
  EXPECT_EQ(LoadingIndicator::current().shownText(), QStringLiteral("Filtering..."));
  EXPECT_FALSE(list_->tableView()->isScrollEnabled());
  EXPECT_FALSE(list_->headerView()->refreshBtn()->isEnabled());
  ASSERT_TRUE(waitForBatches(1));
  EXPECT_FALSE(LoadingIndicator::current().isShown());
  EXPECT_TRUE(list_->tableView()->isScrollEnabled());
  EXPECT_TRUE(list_->headerView()->refreshBtn()->isEnabled());
  EXPECT_EQ(delivered, (std::vector<int>{0, 1, 2, 3, 4, 5}));
  EXPECT_EQ(list_->pagesAsked(), 5);
  EXPECT_EQ(asked(), recent({0, 1, 2, 3, 4}));
  ASSERT_EQ(list_->rows()->torrentCount(), 150);
  std::vector<std::string> names;
  for (const Torrent& torrent : *list_->rows()->torrents()) {
    names.push_back(torrent.name);
  }
  EXPECT_EQ(list_->lastDate(), list_->rows()->torrents()->back().date);

  loadMore();
  EXPECT_FALSE(takesTouches());
  ASSERT_TRUE(waitForBatches(2));
  EXPECT_EQ(asked(), recent({6, 7, 8, 9, 10}));
  loadMore();
  ASSERT_TRUE(waitForBatches(3));
  EXPECT_EQ(asked(), recent({12, 13, 14, 15, 16}));
  ASSERT_EQ(list_->rows()->torrentCount(), 450);

  site_.clearFaults();
  list_->didRefresh();
  EXPECT_EQ(list_->rows()->torrentCount(), 450) << "the old rows stay for now";
  ASSERT_TRUE(waitForBatches(4));
  EXPECT_EQ(asked(), recent({0, 1, 2, 3, 4}));
  ASSERT_EQ(list_->rows()->torrentCount(), 150);
  for (std::size_t i = 0; i < names.size(); ++i) {
    EXPECT_EQ(list_->rows()->torrents()->at(i).name, names[i])
        << "without delays, in the same order";
  }
  list_->viewWillAppear();
  EXPECT_FALSE(LoadingIndicator::current().isShown()) << "coming back fetches nothing";
}

TEST_F(FavoriteListViewControllerTest, TakesPageCountAndCategoryFromTheSettingsOfTheMoment) {
  struct Case {
    const char* count;
    const char* category;
    std::vector<std::string> targets;
  };
  for (const Case& one :
       {Case{"2", "", recent({0, 1})}, Case{"", "0", recent({0, 1, 2, 3, 4})},
        Case{"1", "201", {"/browse/201/0/3"}}, Case{"0", "0", recent({0})},
        Case{"3", "600", {"/browse/600/0/3", "/browse/600/1/3", "/browse/600/2/3"}}}) {
    store_.setString("Veltramoor_favoritesCount", one.count);
    store_.setString("Veltramoor_favoriteCategory", one.category);
    list_ = std::make_shared<FavoriteListViewController>(TableViewStyle::Plain);
    QObject::connect(list_.get(), &FavoriteListViewController::batchLoaded, [this] { ++batches_; });
    list_->viewWillAppear();
    ASSERT_TRUE(waitForBatches(batches_ + 1));
    EXPECT_EQ(asked(), one.targets);
    ASSERT_TRUE(waitFor([this] { return !list_->hasBackgroundWork(); }));
  }
}

// A torrent opened while pages are still on their way: each keeps the overlay for itself.
TEST_F(FavoriteListViewControllerTest, ATorrentOpenedMeanwhileLeavesTheOverlayToTheBatch) {
  filters({""});
  store_.setString("Veltramoor_favoritesCount", "2");
  site_.setFault("/recent/1", Fault{FaultKind::None, 500ms, 0});
  list_->viewWillAppear();
  ASSERT_TRUE(waitFor([this] { return list_->rows()->torrentCount() == 30; }));
  list_->didSelectRowAtIndexPath(0);
  EXPECT_EQ(list_->pagesDelivered(), 1) << "the torrent's page came first";
  EXPECT_TRUE(LoadingIndicator::current().isShown());
  list_->resume();
  EXPECT_FALSE(list_->tableView()->isScrollEnabled());
  ASSERT_TRUE(waitForBatches(1));
  EXPECT_FALSE(LoadingIndicator::current().isShown());

  site_.setFault("/torrent", Fault{FaultKind::None, 900ms, 0});
  list_->fetchNextXPages(2, 0);
  ASSERT_TRUE(waitFor([this] { return list_->rows()->torrentCount() == 90; }));
  bool shown = false;
  QObject::connect(
      list_.get(), &FavoriteListViewController::batchLoaded, list_.get(),
      [&] { shown = LoadingIndicator::current().isShown(); }, Qt::SingleShotConnection);
  list_->didSelectRowAtIndexPath(0);
  EXPECT_EQ(batches_, 2) << "the batch ended during the wait";
  EXPECT_TRUE(shown) << "and left the torrent's overlay up";
  EXPECT_FALSE(LoadingIndicator::current().isShown());
}

TEST_F(FavoriteListViewControllerTest, KeepsWhatAnyFilterAccepts) {
  list_->viewWillAppear();
  ASSERT_TRUE(waitForBatches(1));
  EXPECT_EQ(list_->rows()->torrentCount(), 0) << "no filter, no torrent";
  EXPECT_FALSE(list_->noMoreTorrents()) << "but there is more to look through";
  EXPECT_NE(list_->lastDate(), std::nullopt);
  EXPECT_EQ(list_->noticeAction(), QStringLiteral("Add a filter"));
  EXPECT_TRUE(list_->rows()->isLoadMoreAlone());

  filters({""});
  list_->didRefresh();
  ASSERT_TRUE(waitForBatches(2));
  const std::vector<Torrent> all = *list_->rows()->torrents();
  ASSERT_EQ(all.size(), 150U);
  EXPECT_TRUE(list_->notice().isEmpty());

  const std::vector<std::string> regexes{"[13579]$", "^[A-F]", "(", "(.+)+~"};
  filters(regexes);
  list_->didRefresh();
  ASSERT_TRUE(waitForBatches(3));
  std::vector<Torrent> wanted;
  std::ranges::copy_if(all, std::back_inserter(wanted), [](const Torrent& torrent) {
    const char first = torrent.name.front();
    const char last = torrent.name.back();
    return (first >= 'A' && first <= 'F') || (last >= '0' && last <= '9' && last % 2 == 1);
  });
  EXPECT_FALSE(wanted.empty());
  EXPECT_EQ(*list_->rows()->torrents(), wanted);
  EXPECT_EQ(list_->lastDate(), all.back().date) << "of the page, also when that row is gone";
}

TEST_F(FavoriteListViewControllerTest, NamesTheFilterThatItGaveUpOnAndTriesItAgainOnRefresh) {
  filters({"(.|.|.)+~~~", "(.*)*(.*)*[\\u0002]", "e"});
  list_->viewWillAppear();
  ASSERT_TRUE(waitForBatches(1));
  EXPECT_GT(list_->rows()->torrentCount(), 30);
  const std::vector<std::string> given = list_->filters().givenUp();
  ASSERT_EQ(given, std::vector<std::string>{"(.*)*(.*)*[\\u0002]"});
  EXPECT_EQ(
      list_->notice(),
      QStringLiteral("The filter \"(.*)*(.*)*[\\u0002]\" was given up on: it takes too long."));
  list_->didRefresh();
  EXPECT_TRUE(list_->filters().givenUp().empty());
  ASSERT_TRUE(waitForBatches(2));
}

// Pages 3000/30 = 100 and on are empty.
TEST_F(FavoriteListViewControllerTest, TheLastPageDeliveredDecidesWhetherThereIsMore) {
  filters({""});
  list_->fetchNextXPages(5, 97);
  ASSERT_TRUE(waitForBatches(1));
  EXPECT_EQ(list_->rows()->torrentCount(), 90);
  EXPECT_TRUE(list_->noMoreTorrents());
  EXPECT_EQ(list_->lastDate(), std::nullopt);

  site_.setFault("/recent/1", Fault{FaultKind::Close, {}, 0});
  site_.setFault("/recent/2", Fault{FaultKind::Error500, {}, 0});
  list_->didRefresh();
  ASSERT_TRUE(waitForBatches(2));
  EXPECT_EQ(list_->rows()->torrentCount(), 90) << "pages 0, 3 and 4";
  EXPECT_FALSE(list_->noMoreTorrents()) << "page 4 came";
  EXPECT_EQ(list_->notice(),
            QStringLiteral("2 of 5 pages did not come. 127.0.0.1 broke the connection off. Tap "
                           "here to ask for them again."));
  site_.clearFaults();
  const std::size_t asked = site_.log().size();
  list_->didTapNotice();
  ASSERT_TRUE(waitForBatches(3));
  EXPECT_EQ(list_->rows()->torrentCount(), 150) << "pages 1 and 2 follow the others";
  EXPECT_EQ(site_.log().size(), asked + 2);
  EXPECT_EQ(list_->notice(), QString());
  EXPECT_EQ(list_->listing().currentPage(), 4);

  site_.setFault("/recent", Fault{FaultKind::Close, {}, 0});
  list_->didRefresh();
  ASSERT_TRUE(waitForBatches(4));
  EXPECT_EQ(list_->rows()->torrentCount(), 0);
  EXPECT_TRUE(list_->noMoreTorrents());
  EXPECT_TRUE(list_->notice().startsWith(QStringLiteral("The list did not come.")));
  EXPECT_FALSE(LoadingIndicator::current().isShown());
  EXPECT_TRUE(list_->headerView()->refreshBtn()->isEnabled());
}

TEST_F(FavoriteListViewControllerTest, AFirstBatchThatFailedIsAskedForAgain) {
  filters({""});
  store_.setString("Veltramoor_favoritesCount", "2");
  site_.setFault("/recent", Fault{FaultKind::Close, {}, 2});
  list_->viewWillAppear();
  ASSERT_TRUE(waitForBatches(1));
  EXPECT_EQ(list_->rows()->torrents(), std::nullopt);
  list_->viewWillAppear();
  ASSERT_TRUE(waitForBatches(2));
  EXPECT_EQ(list_->rows()->rowCount(), 61);
}

// The filters of the moment decide, also for pages that were on their way when they changed.
TEST_F(FavoriteListViewControllerTest, FiltersChangedMeanwhileApplyToThePagesThatFollow) {
  filters({"never in a name"});
  store_.setString("Veltramoor_favoritesCount", "2");
  site_.setFault("/recent/1", Fault{FaultKind::None, 300ms, 0});
  list_->viewWillAppear();
  ASSERT_TRUE(waitFor([this] { return list_->pagesDelivered() == 1; }));
  filters({""});
  ASSERT_TRUE(waitForBatches(1));
  EXPECT_EQ(list_->rows()->torrentCount(), 30);
}

TEST_F(FavoriteListViewControllerTest, OpensItsSettingsAndItsFilters) {
  store_.setArray("Veltramoor_filters", {"a"});
  NavigationController navigation(list_);
  navigation.appear();
  ASSERT_TRUE(waitForBatches(1));
  EXPECT_TRUE(navigation.isNavigationBarHidden());
  EXPECT_FALSE(list_->headerView()->settingsBtn()->isHidden());
  EXPECT_FALSE(list_->headerView()->filtersBtn()->isHidden());
  list_->headerView()->filters();
  EXPECT_NE(qobject_cast<EditFavoriteListViewController*>(navigation.topViewController()), nullptr);
  EXPECT_FALSE(navigation.isNavigationBarHidden());
  navigation.popViewController();
  list_->headerView()->settings();
  EXPECT_EQ(navigation.depth(), 2);
  EXPECT_EQ(list_->tabBarItem()->tag(), 1);
}

}  // namespace
}  // namespace veltramoor
