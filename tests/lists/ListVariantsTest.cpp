// The top 100, the uploads, and what all variants have in common.
#include <QAbstractItemModelTester>

#include "lists/SearchListViewController.h"
#include "lists/Top100ListViewController.h"
#include "lists/UploadListViewController.h"
#include "shell/overlay/LoadingIndicator.h"
#include "site/AnonymousUser.h"
#include "site/UserInfo.h"
#include "support/Application.h"
#include "support/ListingPage.h"
#include "support/RawServer.h"

namespace veltramoor {
namespace {

using test::Application;
using test::waitFor;

class ListVariantsTest : public test::ScreenTest {
 protected:
  ~ListVariantsTest() override { becomeAnonymous(); }

  template <typename List>
  std::shared_ptr<List> made() {
    auto list = std::make_shared<List>(TableViewStyle::Plain);
    tester_.emplace(list->rows(), QAbstractItemModelTester::FailureReportingMode::Warning);
    return list;
  }
  /// Runs `begin` and waits until the page has arrived; returns the request's target.
  std::string fetched(AllListViewController& list, const std::function<void()>& begin) {
    bool arrived = false;
    QObject::connect(
        &list, &AllListViewController::pageLoaded, &list, [&](bool) { arrived = true; },
        Qt::SingleShotConnection);
    site_.clearLog();
    begin();
    EXPECT_TRUE(waitFor([&] { return arrived && !list.hasBackgroundWork(); }));
    return site_.log().size() == 1 ? site_.log().back().target : "";
  }

  // Gone in tests of the window, which has its own.
  std::optional<VeltramoorAppDelegate> delegate_{std::in_place};
  std::optional<QAbstractItemModelTester> tester_;
};

TEST_F(ListVariantsTest, NameThemselvesAndOpenTheirSettings) {
  struct Case {
    std::shared_ptr<AllListViewController> list;
    const char* title;
    const char* tab;
    const char* image;
    const char* settings;
    bool searchButton;
  };
  for (const Case& one : std::initializer_list<Case>{
           {std::make_shared<AllListViewController>(TableViewStyle::Plain), "Recent Torrents",
            "Recents", "tabbar-all.png", nullptr, false},
           {std::make_shared<SearchListViewController>(TableViewStyle::Plain), "Search", "Search",
            "tabbar-search.png", "Search Settings", true},
           {std::make_shared<Top100ListViewController>(TableViewStyle::Plain), "Top 100", "Top 100",
            "tabbar-history.png", "Top 100 Settings", false},
           {std::make_shared<UploadListViewController>(TableViewStyle::Plain), "Uploaded Torrents",
            "Uploads", "tabbar-upload.png", "Uploads Settings", false}}) {
    EXPECT_EQ(one.list->title(), QLatin1String(one.title));
    EXPECT_EQ(one.list->tabBarItem()->title(), QLatin1String(one.tab));
    EXPECT_EQ(one.list->tabBarItem()->image(), QLatin1String(one.image));
    EXPECT_EQ(one.list->tabBarItem()->tag(), 0);
    EXPECT_EQ(one.list->searchBar() != nullptr, one.searchButton);
    HeaderView& header = *one.list->headerView();
    EXPECT_EQ(header.settingsBtn()->isHidden(), one.searchButton);
    EXPECT_EQ(header.searchBtn()->isHidden(), !one.searchButton);
    EXPECT_TRUE(header.filtersBtn()->isHidden());
    if (one.settings == nullptr) {
      continue;  // pushed in the window's test, which wants them untouched
    }
    const auto stack = std::make_shared<NavigationController>(one.list);
    one.searchButton ? header.search() : header.settings();
    EXPECT_EQ(stack->topViewController()->title(), QLatin1String(one.settings));
  }
}

TEST_F(ListVariantsTest, EndAtAPageOfFewerThan30Rows) {
  std::size_t rows = 29;
  const test::RawServer pages([&rows](const test::RecordedRequest&) {
    return test::RawServer::response(
        200, test::listingPage(std::vector<std::string>(rows, "N <b>x</b>")));
  });
  SiteConfiguration configuration;
  configuration.siteHost = pages.hostAndPort();
  SiteConfiguration::setCurrent(configuration);
  const auto top = made<Top100ListViewController>();
  const auto uploads = made<UploadListViewController>();
  const auto search = made<SearchListViewController>();
  for (const std::size_t count : {29U, 30U, 100U, 0U, 31U}) {
    rows = count;
    const int shown = static_cast<int>(count) + (count >= 30 ? 1 : 0);
    for (const auto& list :
         std::initializer_list<std::shared_ptr<AllListViewController>>{top, uploads, search}) {
      fetched(*list, [&] { list->didRefresh(); });
      EXPECT_EQ(list->rows()->rowCount(), shown) << list->title().toStdString();
      EXPECT_EQ(list->notice().isEmpty(), count > 0);
    }
  }
}

TEST_F(ListVariantsTest, TheTop100AsksForItsCategory) {
  const auto list = made<Top100ListViewController>();
  EXPECT_EQ(fetched(*list, [&] { list->viewWillAppear(); }), "/top/all") << "nothing stored";
  list->viewWillAppear();
  EXPECT_FALSE(list->hasBackgroundWork());
  store_.setString("Veltramoor_top100OrderBy", "5");
  store_.setString("Veltramoor_top100SortBy", "asc");
  store_.setString("Veltramoor_top100Category", "");
  EXPECT_EQ(fetched(*list, [&] { list->didRefresh(); }), "/top/all");
  store_.setString("Veltramoor_top100Category", "205");
  EXPECT_EQ(fetched(*list, [&] { list->didRefresh(); }), "/top/205");
}

TEST_F(ListVariantsTest, TheRowAfterTheTop100AppendsRecentTorrents) {
  const auto list = made<Top100ListViewController>();
  fetched(*list, [&] { list->viewWillAppear(); });
  ASSERT_EQ(list->rows()->rowCount(), 101);
  EXPECT_FALSE(list->drawsLoadMoreItem());
  TorrentItemTableViewCell cell;
  list->cellForRowAtIndexPath(100, &cell);
  EXPECT_TRUE(cell.nameLbl.isEmpty());
  EXPECT_TRUE(cell.typeImg.isNull());
  list->cellForRowAtIndexPath(7, &cell);
  const QString last = cell.nameLbl;
  EXPECT_FALSE(last.isEmpty());
  list->cellForRowAtIndexPath(100, &cell);
  EXPECT_EQ(cell.nameLbl, last) << "a cell used before shows what it last showed";

  const std::string best = list->rows()->torrents()->front().name;
  EXPECT_EQ(fetched(*list, [&] { list->didSelectRowAtIndexPath(100); }), "/recent/1");
  EXPECT_EQ(list->rows()->rowCount(), 131);
  EXPECT_EQ(list->rows()->torrents()->front().name, best);
  store_.setString("Veltramoor_recentCategory", "205");
  EXPECT_EQ(fetched(*list, [&] { list->didSelectRowAtIndexPath(130); }), "/browse/205/2/99/");
  EXPECT_GT(list->rows()->torrentCount(), 130);
  EXPECT_EQ(fetched(*list, [&] { list->didRefresh(); }), "/top/all");
  EXPECT_EQ(list->rows()->torrentCount(), 100);
  EXPECT_EQ(fetched(*list, [&] { list->didSelectRowAtIndexPath(100); }), "/browse/205/1/99/")
      << "a refresh starts the counter anew";
}

TEST_F(ListVariantsTest, UploadsAreAskedForByNameOrderAndPage) {
  UserInfo::sharedInstance().setUsername("anna");
  const auto list = made<UploadListViewController>();
  store_.setString("Veltramoor_uploadCategory", "201");
  EXPECT_EQ(fetched(*list, [&] { list->viewWillAppear(); }), "/user/anna/0/99");
  EXPECT_EQ(list->rows()->rowCount(), 31);
  EXPECT_EQ(fetched(*list, [&] { list->didSelectRowAtIndexPath(30); }), "/user/anna/1/99");
  EXPECT_GT(list->rows()->torrentCount(), 30);
  store_.setString("Veltramoor_uploadOrderBy", "7");
  EXPECT_EQ(fetched(*list, [&] { list->didRefresh(); }), "/user/anna/0/7");
  UserInfo::sharedInstance().setUsername("a b");
  EXPECT_EQ(fetched(*list, [&] { list->didRefresh(); }), "")
      << "a name that no URL may hold is no request";
  EXPECT_FALSE(LoadingIndicator::current().isShown());
  EXPECT_EQ(list->rows()->rowCount(), 0);
}

// The list outlives a logout.
TEST_F(ListVariantsTest, AnotherPersonDoesNotSeeTheLastOnesUploads) {
  UserInfo::sharedInstance().setUsername("anna");
  const auto list = made<UploadListViewController>();
  EXPECT_EQ(fetched(*list, [&] { list->viewWillAppear(); }), "/user/anna/0/99");
  ASSERT_EQ(list->rows()->torrentCount(), 30);
  list->viewWillAppear();
  EXPECT_FALSE(list->hasBackgroundWork()) << "the same person's stay";
  UserInfo::sharedInstance().setUsername("Anonymous");
  EXPECT_EQ(fetched(*list,
                    [&] {
                      list->viewWillAppear();
                      EXPECT_EQ(list->rows()->torrentCount(), 0);
                    }),
            "/user/Anonymous/0/99");
  EXPECT_EQ(list->rows()->torrentCount(), 0);
  // A page that was under way is nobody's, and a first page that did not come is asked for again.
  UserInfo::sharedInstance().setUsername("anna");
  EXPECT_EQ(fetched(*list, [&] { list->viewWillAppear(); }), "/user/anna/0/99");
  list->fetchPage(1);
  for (const char* name : {"demo", "anna", "demo"}) {
    UserInfo::sharedInstance().setUsername(name);
    list->viewWillAppear();
  }
  ASSERT_TRUE(waitFor([&] { return !list->hasBackgroundWork(); }));
  QCoreApplication::processEvents();
  EXPECT_EQ(list->rows()->torrentCount(), 30) << "once";
  EXPECT_EQ(list->notice(), QString());
  UserInfo::sharedInstance().setUsername("anna");
  site_.setFault("/user/anna", Fault{FaultKind::Close, {}, 0});
  list->viewWillAppear();
  ASSERT_TRUE(waitFor([&] { return !list->hasBackgroundWork(); }));
  QCoreApplication::processEvents();
  EXPECT_FALSE(list->rows()->torrents().has_value());
  EXPECT_EQ(list->listing().currentPage(), 0);
  site_.clearFaults();
  EXPECT_EQ(fetched(*list, [&] { list->viewWillAppear(); }), "/user/anna/0/99");
}

TEST_F(ListVariantsTest, TheTop100WalksThroughTheWindow) {
  const auto list = made<Top100ListViewController>();
  delegate_.reset();
  Application app(std::make_shared<NavigationController>(list));
  ASSERT_TRUE(app.waitForRows(100));
  EXPECT_EQ(app.item("searchBar"), nullptr);
  app.item("torrentTable")->setProperty("currentIndex", 100);
  QQuickItem* last = app.row(100);
  ASSERT_NE(last, nullptr);
  EXPECT_FALSE(test::itemNamed(last, QStringLiteral("loadMoreItem"))->isVisible());
  EXPECT_FALSE(test::itemNamed(last, QStringLiteral("sendButton"))->isVisible());
  EXPECT_TRUE(test::itemNamed(last, QStringLiteral("torrentCell"))->isVisible());
  app.click(last);
  ASSERT_TRUE(app.waitForRows(130));
  EXPECT_EQ(site_.log().back().target, "/recent/1");
  EXPECT_TRUE(waitFor([&] {
    return test::itemNamed(app.row(100), QStringLiteral("sendButton"))->isVisible();
  })) << "a torrent's row now";
  app.click(app.item("refreshBtn"));
  ASSERT_TRUE(app.waitForRows(100));
}

TEST_F(ListVariantsTest, UploadsOfNobodySaySo) {
  const auto list = made<UploadListViewController>();
  delegate_.reset();
  Application app(std::make_shared<NavigationController>(list));
  ASSERT_TRUE(waitFor([&] { return !list->notice().isEmpty(); }));
  EXPECT_EQ(site_.log().back().target, "/user/Anonymous/0/99");
  EXPECT_TRUE(app.item("listNotice")->isVisible());
  EXPECT_TRUE(list->notice().contains(QStringLiteral("sign in")));
  UserInfo::sharedInstance().setUsername("anna");
  app.click(app.item("refreshBtn"));
  ASSERT_TRUE(app.waitForRows(30));
  EXPECT_FALSE(app.item("listNotice")->isVisible());
}

}  // namespace
}  // namespace veltramoor
