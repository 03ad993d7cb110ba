// A wait for a site that says nothing, and the person who ends it.
#include "Application.h"
#include "ScreenTest.h"
#include "lists/FavoriteListViewController.h"
#include "lists/SearchListViewController.h"
#include "remote/ServerInfo.h"
#include "shell/LoadingIndicator.h"
#include "shell/SendingTorrentIndicator.h"
#include "support/RawServer.h"

namespace veltramoor {
namespace {

using test::Application;
using test::waitFor;

class StoppedWaitTest : public test::ScreenTest {
 protected:
  void hang(const std::string& path) { site_.setFault(path, Fault{FaultKind::Hang, {}, 0}); }
  void answer(const std::string& path) { site_.setFault(path, Fault{}); }
  // By the person: true once the overlay has offered it and nothing is under way any more.
  static bool stop(Application& app, bool byKey) {
    const LoadingIndicator& overlay = LoadingIndicator::sharedInstance();
    if (!waitFor([&] { return overlay.isEndable(); })) {
      return false;
    }
    EXPECT_EQ(overlay.hint(), QStringLiteral("Tap here to stop waiting"));
    if (byKey) {
      app.type(Qt::Key_Escape);
    } else {
      app.click(app.item("loadingHint"));
    }
    return waitFor([&] { return !app.list().hasBackgroundWork() && !overlay.isShown(); });
  }
  static std::string notice(Application& app) { return app.list().notice().toStdString(); }
};

TEST_F(StoppedWaitTest, AFirstPageAndARefreshOfIt) {
  hang("/recent/0");
  Application app;
  ASSERT_TRUE(app.waitForItem("loadingOverlay"));
  app.type(Qt::Key_Escape);
  app.click(app.item("loadingOverlay"));
  EXPECT_TRUE(app.list().hasBackgroundWork()) << "too early to be meant";
  ASSERT_TRUE(stop(app, false));
  EXPECT_EQ(notice(app), "Stopped. Tap refresh to try again.");
  answer("/recent/0");
  app.click(app.item("refreshBtn"));
  ASSERT_TRUE(app.waitForRows(30));
  EXPECT_EQ(notice(app), "");
  hang("/recent/0");
  app.click(app.item("refreshBtn"));
  ASSERT_TRUE(stop(app, true));
  EXPECT_EQ(app.list().rows()->rowCount(), 31) << "a refresh that was stopped takes nothing away";
  EXPECT_EQ(notice(app), "Stopped. The list is as it was.");
  EXPECT_TRUE(app.list().tableView()->isScrollEnabled());
  EXPECT_TRUE(app.list().tableView()->allowsSelection());
}

TEST_F(StoppedWaitTest, AFurtherPageIsAskedForAgain) {
  Application app;
  ASSERT_TRUE(app.waitForRows(30));
  hang("/recent/1");
  const std::optional<std::string> date = app.list().lastDate();
  app.type(Qt::Key_End);
  app.type(Qt::Key_Return);
  ASSERT_TRUE(stop(app, true));
  EXPECT_EQ(app.list().rows()->rowCount(), 31);
  EXPECT_EQ(app.list().lastDate(), date) << "what \"load more\" says";
  answer("/recent/1");
  app.type(Qt::Key_End);
  app.type(Qt::Key_Return);
  ASSERT_TRUE(app.waitForRows(60));
  EXPECT_EQ(site_.log().back().target, "/recent/1");
}

TEST_F(StoppedWaitTest, ABatchOfFavouritesKeepsWhatCame) {
  store_.setArray("Veltramoor_filters", {"."});
  store_.setString("Veltramoor_favoritesCount", "3");
  const auto list = std::make_shared<FavoriteListViewController>(TableViewStyle::Plain);
  Application app(std::make_shared<NavigationController>(list));
  ASSERT_TRUE(app.waitForRows(90));
  hang("/recent/0");
  list->didRefresh();
  ASSERT_TRUE(stop(app, true));
  // Pages 1 and 2 waited for their turn and are there; they replace the rows.
  EXPECT_EQ(list->rows()->torrentCount(), 60);
  EXPECT_EQ(notice(app), "1 of 3 pages did not come. Tap refresh to start again.");
  for (const char* page : {"/recent/4", "/recent/5", "/recent/6"}) {
    hang(page);
  }
  list->didSelectRowAtIndexPath(60);
  ASSERT_TRUE(stop(app, true));
  EXPECT_EQ(list->rows()->rowCount(), 61) << "with \"load more\"";
  EXPECT_EQ(list->currentPage(), 2) << "asked for again by the next \"load more\"";
  EXPECT_EQ(notice(app), "Stopped. The list is as it was.");
}

// Another query ends the wait for the one before by itself.
TEST_F(StoppedWaitTest, ASearchIsStoppedByTheNextOne) {
  hang("/search/the");
  const auto list = std::make_shared<SearchListViewController>(TableViewStyle::Plain);
  Application app(std::make_shared<NavigationController>(list));
  for (const char* text : {"the", "orchard"}) {
    list->searchBar()->setText(QLatin1String(text));
    list->searchBarSearchButtonClicked();
  }
  ASSERT_TRUE(waitFor([&] { return list->rows()->torrentCount() > 0; }));
  EXPECT_EQ(site_.log().back().target, "/search/orchard/0/99/0");
}

TEST_F(StoppedWaitTest, ALoginEndsWithoutAWord) {
  store_.setString("Veltramoor_anonymousLogin", "NO");
  store_.setString("Veltramoor_username", "demo");
  store_.setString("Veltramoor_password", "demo");
  hang("/settings");
  Application app(nullptr);
  ASSERT_TRUE(app.waitForItem("loginBtn"));
  LoginViewController* login = app.root().loginViewController();
  for (const char* page : {"/settings", "/login"}) {
    SCOPED_TRACE(page);
    app.click(app.item("loginBtn"));
    ASSERT_TRUE(waitFor([] { return LoadingIndicator::sharedInstance().isEndable(); }));
    app.click(app.item("loadingHint"));
    ASSERT_TRUE(waitFor([&] { return login->loginBtn()->isEnabled(); }));
    EXPECT_FALSE(LoadingIndicator::sharedInstance().isShown());
    EXPECT_FALSE(app.alert().isVisible()) << app.alert().message().toStdString();
    EXPECT_EQ(site_.log().back().target, page);
    answer(page);
    hang("/login");
  }
  answer("/login");
  hang("/recent/0");
  app.click(app.item("loginBtn"));
  ASSERT_TRUE(app.waitForItem("tabBar"));
  EXPECT_TRUE(LoadingIndicator::sharedInstance().isShown()) << "the first list's";
  EXPECT_EQ(LoadingIndicator::sharedInstance().shownText(), QStringLiteral("Loading..."));
  ASSERT_TRUE(waitFor([&] { return LoadingIndicator::sharedInstance().isEndable(); }));
  app.type(Qt::Key_Escape);
  EXPECT_TRUE(waitFor([&] { return app.item("tab1")->isEnabled(); }));
  ASSERT_TRUE(waitFor([&] { return !app.root().hasBackgroundWork(); }));
}

// The person's computer is off, or in another network, and tells nobody.
TEST_F(StoppedWaitTest, ASendIsNotRememberedAndCanBeRepeated) {
  std::atomic<bool> silent = true;
  const test::RawServer client([&](const test::RecordedRequest&) {
    return silent ? test::RawReply::hang() : test::RawReply(test::RawServer::response(200));
  });
  ServerInfo& info = ServerInfo::sharedInstance();
  info.setClient("Transmission");
  info.setAddress("127.0.0.1");
  info.setPort(std::to_string(client.port()));
  Application app;
  ASSERT_TRUE(app.waitForRows(30));
  const LoadingIndicator& sending = SendingTorrentIndicator::sharedInstance();
  app.tapSend(0);
  app.tapSend(1);
  ASSERT_TRUE(waitFor([&] { return sending.isEndable(); }));
  app.click(app.item("loadingHint"));
  ASSERT_TRUE(waitFor([&] { return !app.list().hasBackgroundWork() && !sending.isShown(); }));
  EXPECT_FALSE(app.alert().isVisible()) << "whoever stopped it knows";
  EXPECT_FALSE(app.list().rows()->torrents()->at(0).isDownloaded);
  EXPECT_EQ(client.hits(), 1U) << "nothing was sent after it";
  silent = false;
  app.tapSend(1);
  ASSERT_TRUE(waitFor([&] { return app.list().rows()->torrents()->at(1).isDownloaded; }));
}

// One overlay above the other: each can be ended.
TEST_F(StoppedWaitTest, ASendBehindAPage) {
  const test::RawServer client([](const test::RecordedRequest&) { return test::RawReply::hang(); });
  ServerInfo& info = ServerInfo::sharedInstance();
  info.setClient("Transmission");
  info.setAddress("127.0.0.1");
  info.setPort(std::to_string(client.port()));
  Application app;
  ASSERT_TRUE(app.waitForRows(30));
  hang("/recent/1");
  app.list().fetchPage(1);
  app.tapSend(0);
  const LoadingIndicator& sending = SendingTorrentIndicator::sharedInstance();
  const LoadingIndicator& loading = LoadingIndicator::sharedInstance();
  ASSERT_TRUE(waitFor([&] { return loading.isEndable() && sending.isEndable(); }));
  QQuickItem* box = app.item("sendingOverlay");
  QQuickItem* hint = test::itemNamed(app.item("loadingOverlay"), QStringLiteral("loadingHint"));
  EXPECT_LT(hint->mapToScene(QPointF()).y(), box->y() - hint->height()) << "beside the box above";
  app.click(hint);
  ASSERT_TRUE(waitFor([&] { return !loading.isShown() && client.hits() == 1; }));
  EXPECT_TRUE(sending.isEndable());
  app.type(Qt::Key_Escape);
  ASSERT_TRUE(waitFor([&] { return !sending.isShown() && !app.list().hasBackgroundWork(); }));
}

// The offer is one wait's: it neither outlives its box nor passes to the next one.
TEST_F(StoppedWaitTest, AnOfferGoesWithWhatItStoodFor) {
  VeltramoorAppDelegate delegate;
  LoadingIndicator& overlay = LoadingIndicator::sharedInstance();
  int ended = 0;
  overlay.offerEnd([&] { ++ended; });
  overlay.showLoadingIndicators();
  overlay.offerEnd([&] { ended += 10; });
  overlay.showLoadingIndicators();
  overlay.offerEnd([&] { ended += 100; });
  overlay.offerEnd({});
  QTest::qWait(3200);
  EXPECT_FALSE(overlay.isEndable());
  overlay.endWait();
  overlay.offerEnd([&] { ended += 1000; });
  ASSERT_TRUE(waitFor([&] { return overlay.isEndable(); }));
  overlay.endWait();
  overlay.endWait();
  EXPECT_EQ(ended, 1000);
  EXPECT_TRUE(overlay.isShown()) << "until its owner hides it";
  EXPECT_EQ(overlay.hint(), QString());
  overlay.hideLoadingIndicators();
}

}  // namespace
}  // namespace veltramoor
