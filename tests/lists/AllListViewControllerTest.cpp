// The Recent list without its views: pages, paging, failures, sends.
#include "lists/AllListViewController.h"

#include <QAbstractItemModelTester>

#include "platform/MainThread.h"
#include "remote/ServerInfo.h"
#include "shell/overlay/LoadingIndicator.h"
#include "shell/overlay/SendingTorrentIndicator.h"
#include "support/ListingPage.h"
#include "support/RawServer.h"
#include "support/ScreenTest.h"
#include "toolkit/TabBarController.h"

namespace veltramoor {
namespace {

using test::waitFor;

class AllListViewControllerTest : public test::ScreenTest {
 protected:
  AllListViewControllerTest() {
    QObject::connect(list_.get(), &AllListViewController::pageLoaded, [this] { ++pages_; });
    QObject::connect(&list_->sending(), &ListSending::finished, [this] { ++sends_; });
  }
  ~AllListViewControllerTest() override {
    EXPECT_TRUE(waitFor([this] { return !list_->hasBackgroundWork(); }));
    QCoreApplication::processEvents();
  }

  [[nodiscard]] bool waitForPages(int count) {
    return waitFor([&] { return pages_ == count; });
  }
  [[nodiscard]] int loadMoreRow() const { return list_->rows()->torrentCount(); }
  [[nodiscard]] QString sending() const { return SendingTorrentIndicator::current().shownText(); }

  VeltramoorAppDelegate delegate_;
  std::shared_ptr<AllListViewController> list_ =
      std::make_shared<AllListViewController>(TableViewStyle::Plain);
  QAbstractItemModelTester tester_{list_->rows(),
                                   QAbstractItemModelTester::FailureReportingMode::Warning};
  int pages_ = 0;
  int sends_ = 0;
};

TEST_F(AllListViewControllerTest, LoadsOncePagesOnAndRefreshes) {
  list_->viewWillAppear();
  EXPECT_TRUE(LoadingIndicator::current().isShown());
  EXPECT_EQ(LoadingIndicator::current().shownText(), QStringLiteral("Loading..."));
  EXPECT_FALSE(list_->tableView()->allowsSelection());
  list_->didSelectRowAtIndexPath(0);
  ASSERT_TRUE(waitForPages(1));
  EXPECT_FALSE(LoadingIndicator::current().isShown());
  EXPECT_TRUE(list_->tableView()->allowsSelection());
  EXPECT_EQ(list_->rows()->rowCount(), 31);
  EXPECT_EQ(list_->lastDate(), list_->rows()->torrents()->back().date);
  list_->viewWillAppear();
  EXPECT_FALSE(list_->hasBackgroundWork()) << "coming back fetches nothing";

  list_->didSelectRowAtIndexPath(loadMoreRow());
  EXPECT_FALSE(list_->headerView()->refreshBtn()->isEnabled())
      << "a refresh now would be answered by the page under way";
  ASSERT_TRUE(waitForPages(2));
  EXPECT_EQ(list_->rows()->torrentCount(), 60);
  const Torrent first = list_->rows()->torrents()->front();

  list_->didRefresh();
  EXPECT_EQ(list_->rows()->torrentCount(), 60) << "the old rows stay until the new ones are there";
  EXPECT_FALSE(list_->tableView()->isScrollEnabled());
  ASSERT_TRUE(waitForPages(3));
  EXPECT_EQ(list_->rows()->torrentCount(), 30);
  EXPECT_EQ(list_->rows()->torrents()->front(), first);
  EXPECT_TRUE(list_->tableView()->isScrollEnabled());
  EXPECT_TRUE(list_->headerView()->refreshBtn()->isEnabled());
  std::vector<std::string> targets;
  for (const DemoRequest& request : site_.log()) {
    targets.push_back(request.target);
  }
  EXPECT_EQ(targets, (std::vector<std::string>{"/recent/0", "/recent/1", "/recent/0"}));
}

TEST_F(AllListViewControllerTest, BuildsItsUrlFromTheSettingsOfTheMoment) {
  struct Case {
    std::string category;
    std::string order;
    std::string sort;
    const char* target;
  };
  for (const Case& one :
       {Case{"", "", "", "/recent/0"}, Case{"201", "7", "asc", "/browse/201/0/8/"}}) {
    store_.setString("Veltramoor_recentCategory", one.category);
    store_.setString("Veltramoor_recentOrderBy", one.order);
    store_.setString("Veltramoor_recentSortBy", one.sort);
    list_->fetchPage(0);
    ASSERT_TRUE(waitForPages(pages_ + 1));
    EXPECT_EQ(site_.log().back().target, one.target);
  }
}

TEST_F(AllListViewControllerTest, EndsAtAShortPageAndAtAnEmptyOne) {
  const int full = static_cast<int>(site_.catalogue().all().size()) / 30;
  list_->fetchPage(full - 1);
  ASSERT_TRUE(waitForPages(1));
  EXPECT_FALSE(list_->noMoreTorrents()) << "exactly 30 rows may be followed by more";
  list_->didSelectRowAtIndexPath(loadMoreRow());
  ASSERT_TRUE(waitForPages(2));
  EXPECT_TRUE(list_->noMoreTorrents());
  EXPECT_EQ(list_->lastDate(), std::nullopt);
  EXPECT_EQ(list_->rows()->rowCount(), 30);
  list_->didSelectRowAtIndexPath(30);
  EXPECT_FALSE(list_->hasBackgroundWork());
}

// Whatever the site does, the overlay goes, the list stays usable and says what is wrong.
TEST_F(AllListViewControllerTest, SurvivesEveryFaultOfTheSite) {
  struct Case {
    FaultKind kind;
    int rows;
  };
  int expected = 0;
  for (const Case& one :
       {Case{FaultKind::Close, -1}, Case{FaultKind::Reset, -1}, Case{FaultKind::Endless, -1},
        Case{FaultKind::Bomb, -1}, Case{FaultKind::RedirectLoop, -1}, Case{FaultKind::Headers, -1},
        Case{FaultKind::InvalidUtf8, -1}, Case{FaultKind::TrFlood, 0}, Case{FaultKind::Big, 0},
        Case{FaultKind::Error500, 0}, Case{FaultKind::OtherLayout, 0}}) {
    SCOPED_TRACE(static_cast<int>(one.kind));
    const auto list = std::make_shared<AllListViewController>(TableViewStyle::Plain);
    QObject::connect(list.get(), &AllListViewController::pageLoaded, [this] { ++pages_; });
    site_.setFault("/recent", Fault{one.kind, {}, 0});
    list->viewWillAppear();
    ASSERT_TRUE(waitForPages(++expected));
    EXPECT_FALSE(LoadingIndicator::current().isShown());
    EXPECT_TRUE(list->tableView()->allowsSelection());
    EXPECT_TRUE(list->headerView()->refreshBtn()->isEnabled());
    EXPECT_EQ(list->rows()->torrents() ? list->rows()->torrentCount() : -1, one.rows);
    EXPECT_FALSE(list->notice().isEmpty());
    site_.clearFaults();
    list->didRefresh();
    ASSERT_TRUE(waitForPages(++expected));
    EXPECT_EQ(list->rows()->torrentCount(), 30) << "a refresh mends it";
    EXPECT_TRUE(list->notice().isEmpty());
    ASSERT_TRUE(waitFor([&] { return !list->hasBackgroundWork(); }));
  }
}

TEST_F(AllListViewControllerTest, AFirstPageThatFailedIsAskedForAgain) {
  site_.setFault("/recent/0", Fault{FaultKind::Close, {}, 1});
  list_->viewWillAppear();
  ASSERT_TRUE(waitForPages(1));
  EXPECT_EQ(list_->rows()->torrents(), std::nullopt);
  EXPECT_TRUE(list_->noMoreTorrents());
  list_->viewWillAppear();
  ASSERT_TRUE(waitForPages(2));
  EXPECT_EQ(list_->rows()->rowCount(), 31);
}

TEST_F(AllListViewControllerTest, CountsSendsAndMarksEveryRowOfTheName) {
  const test::RawServer pages([](const test::RecordedRequest&) {
    return test::RawServer::response(
        200, test::listingPage({"a", "b", "c", "twice", "d", "e", "f", "twice"}));
  });
  SiteConfiguration configuration;
  configuration.siteHost = pages.hostAndPort();
  SiteConfiguration::setCurrent(configuration);
  const test::RawServer client([](const test::RecordedRequest& request) {
    return test::RawServer::response(request.method == "GET" ? 409 : 200);
  });
  sendTo(client);
  list_->fetchPage(0);
  ASSERT_TRUE(waitForPages(1));
  ASSERT_EQ(list_->rows()->torrentCount(), 8);

  list_->didTapDownloadButton(3);
  EXPECT_EQ(sending(), QStringLiteral("Sending  torrent to server"));
  list_->didTapDownloadButton(4);
  EXPECT_EQ(sending(), QStringLiteral("Sending 2 torrents to server"));
  ASSERT_TRUE(waitFor([&] { return sends_ == 1; }));
  EXPECT_EQ(sending(), QStringLiteral("Sending  torrent to server"));
  EXPECT_TRUE(SendingTorrentIndicator::current().isShown());
  ASSERT_TRUE(waitFor([&] { return sends_ == 2; }));
  EXPECT_FALSE(SendingTorrentIndicator::current().isShown());
  std::string marked;
  for (const Torrent& torrent : *list_->rows()->torrents()) {
    marked += torrent.isDownloaded ? torrent.name + " " : "- ";
  }
  EXPECT_EQ(marked, "- - - twice d - - twice ");
  const auto heard = [&](int row) {
    return list_->rows()->data(list_->rows()->index(row), TorrentTableModel::SummaryRole);
  };
  EXPECT_EQ(heard(2), QStringLiteral("c, 1 KiB, today, 1 seeders, 2 leechers"));
  EXPECT_EQ(heard(3), QStringLiteral("twice, 1 KiB, today, 1 seeders, 2 leechers, sent"));
  TorrentItemTableViewCell cell;
  list_->cellForRowAtIndexPath(3, &cell);
  EXPECT_FALSE(cell.downloadedImg.isNull());
  list_->cellForRowAtIndexPath(5, &cell);
  EXPECT_TRUE(cell.downloadedImg.isNull());

  list_->didTapDownloadButton(99);
  EXPECT_EQ(list_->sending().count(), 0);
  ServerInfo::sharedInstance().setPort("1");
  list_->didTapDownloadButton(6);
  ASSERT_TRUE(waitFor([&] { return sends_ == 3; }));
  EXPECT_EQ(delegate_.alertView()->title(), QStringLiteral("Connection with server failed."));
  EXPECT_FALSE(list_->rows()->torrents()->at(6).isDownloaded);
}

TEST_F(AllListViewControllerTest, ALatePageLeavesTheOverlayToTheListThatWaitsNow) {
  const auto other = std::make_shared<AllListViewController>(TableViewStyle::Plain);
  site_.setFault("/recent/0", Fault{FaultKind::None, std::chrono::milliseconds(200), 0});
  site_.setFault("/recent/1", Fault{FaultKind::None, std::chrono::milliseconds(600), 0});
  list_->fetchPage(0);
  other->fetchPage(1);
  ASSERT_TRUE(waitForPages(1));
  EXPECT_EQ(other->rows()->torrents(), std::nullopt);
  EXPECT_TRUE(LoadingIndicator::current().isShown());
  ASSERT_TRUE(waitFor([&] { return !other->hasBackgroundWork() && other->rows()->torrents(); }));
  EXPECT_FALSE(LoadingIndicator::current().isShown());
}

// Who goes on from a page that takes long may ask for the next one.
TEST_F(AllListViewControllerTest, ARefreshWaitsForEveryPageUnderWay) {
  std::vector<bool> enabled;
  QObject::connect(list_.get(), &AllListViewController::pageLoaded,
                   [&] { enabled.push_back(list_->headerView()->refreshBtn()->isEnabled()); });
  for (const int page : {0, 1, 2}) {
    list_->fetchPage(page);
  }
  ASSERT_TRUE(waitForPages(3));
  EXPECT_EQ(enabled, (std::vector<bool>{false, false, true}));
}

TEST_F(AllListViewControllerTest, DisablesEveryTabWhileItLoads) {
  TabBarController tabs;
  const auto other = std::make_shared<ViewController>(QString());
  tabs.setViewControllers({list_, other});
  list_->fetchPage(0);
  EXPECT_FALSE(other->tabBarItem()->isEnabled());
  EXPECT_FALSE(tabs.moreNavigationController()->tabBarItem()->isEnabled());
  ASSERT_TRUE(waitForPages(1));
  EXPECT_TRUE(list_->tabBarItem()->isEnabled());
  EXPECT_TRUE(other->tabBarItem()->isEnabled());
  EXPECT_TRUE(tabs.moreNavigationController()->tabBarItem()->isEnabled());
}

TEST_F(AllListViewControllerTest, IconsFallBackAndRemoteOnesLoadOnce) {
  EXPECT_FALSE(list_->cachedImageForTorrent(QStringLiteral("201.png")).isNull());
  EXPECT_EQ(list_->cachedImageForTorrent(QStringLiteral("9999.png")),
            list_->cachedImageForTorrent(QStringLiteral("cat_unknown.png")));
  const QString url = QString::fromStdString(site_.url("/img/201.png"));
  EXPECT_TRUE(list_->cachedImageForTorrent(url).isNull());
  EXPECT_TRUE(list_->cachedImageForTorrent(url).isNull());
  ASSERT_TRUE(waitFor([&] { return !list_->cachedImageForTorrent(url).isNull(); }));
  EXPECT_EQ(list_->cachedImageForTorrent(url).size(), QSize(48, 36));
  EXPECT_EQ(site_.log().size(), 1U);
}

}  // namespace
}  // namespace veltramoor
