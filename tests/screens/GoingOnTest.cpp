// A wait that has become long, and the person who goes on meanwhile.
#include "Application.h"
#include "ScreenTest.h"
#include "lists/FavoriteListViewController.h"
#include "remote/ServerInfo.h"
#include "shell/SendingTorrentIndicator.h"
#include "support/RawServer.h"

namespace veltramoor {
namespace {

using namespace std::chrono_literals;
using test::Application;
using test::waitFor;

class GoingOnTest : public test::ScreenTest {
 protected:
  GoingOnTest() { LoadingIndicator::patience() = 300ms; }
  ~GoingOnTest() override { LoadingIndicator::patience() = 3s; }

  // Has the site answer `path` only when it is let to.
  void hold(const std::string& path) { site_.setFault(path, Fault{FaultKind::None, 2s, 1}); }
  /// The person's tap or key, as soon as it is offered.
  static bool goOn(Application& app, LoadingIndicator& overlay, bool byKey) {
    if (!waitFor([&] { return overlay.canGoOn(); })) {
      return false;
    }
    EXPECT_EQ(overlay.hint(), QStringLiteral("Tap here to go on meanwhile"));
    if (byKey) {
      app.type(Qt::Key_Escape);
    } else {
      app.click(app.item("loadingHint"));
    }
    return !overlay.isShown();
  }

  LoadingIndicator& loading_ = LoadingIndicator::sharedInstance();
  LoadingIndicator& sending_ = SendingTorrentIndicator::sharedInstance();
};

TEST_F(GoingOnTest, FromAFirstPageToAnotherTabAndBack) {
  LoadingIndicator::patience() = 1s;
  store_.setString("Veltramoor_automaticLogin", "YES");
  hold("/recent/0");
  Application app(nullptr);
  ASSERT_TRUE(app.waitForItem("tabBar"));
  EXPECT_TRUE(loading_.isShown()) << "the list's own, after the login's";
  EXPECT_EQ(loading_.shownText(), QStringLiteral("Loading..."));
  app.type(Qt::Key_Escape);
  app.click(app.item("loadingOverlay"));
  EXPECT_TRUE(loading_.isShown()) << "too early to be meant";
  EXPECT_FALSE(app.item("tab3")->isEnabled());
  ASSERT_TRUE(goOn(app, loading_, false));
  const auto* recent = qobject_cast<AllListViewController*>(
      qobject_cast<NavigationController*>(app.root().tabBarController()->selectedViewController())
          ->topViewController());
  ASSERT_NE(recent, nullptr);
  EXPECT_TRUE(recent->hasBackgroundWork()) << "the page is still under way";
  app.click(app.item("tab3"));
  EXPECT_EQ(app.root().tabBarController()->selectedIndex(), 3);
  ASSERT_TRUE(waitFor([&] { return !app.root().hasBackgroundWork() && !loading_.isShown(); }));
  app.click(app.item("tab0"));
  EXPECT_NE(app.row(0), nullptr) << "it came";
  EXPECT_EQ(site_.log().front().target, "/recent/0");
}

TEST_F(GoingOnTest, ARefreshAndABatchArriveAllTheSame) {
  store_.setArray("Veltramoor_filters", {"."});
  store_.setString("Veltramoor_favoritesCount", "3");
  const auto list = std::make_shared<FavoriteListViewController>(TableViewStyle::Plain);
  Application app(std::make_shared<NavigationController>(list));
  ASSERT_TRUE(app.waitForRows(90));
  hold("/recent/1");
  list->didRefresh();
  ASSERT_TRUE(goOn(app, loading_, true));
  EXPECT_TRUE(list->tableView()->isScrollEnabled());
  EXPECT_TRUE(list->tableView()->allowsSelection());
  EXPECT_EQ(list->rows()->torrentCount(), 30) << "the first page has replaced the rows";
  ASSERT_TRUE(app.waitForRows(90));
  EXPECT_EQ(list->notice(), QString());
}

// What was shown in between took the box, the offer with it.
TEST_F(GoingOnTest, AListThatStillWaitsTakesItsOverlayBack) {
  Application app;
  ASSERT_TRUE(app.waitForRows(30));
  hold("/recent/1");
  app.list().fetchPage(1);
  for (const bool back : {false, true}) {
    loading_.showLoadingIndicators();
    loading_.hideLoadingIndicators();
    back ? app.list().viewWillAppear() : app.list().resume();
    EXPECT_TRUE(loading_.isShown());
  }
  EXPECT_FALSE(app.list().tableView()->allowsSelection());
  ASSERT_TRUE(goOn(app, loading_, false));
  app.list().viewWillAppear();
  EXPECT_FALSE(loading_.isShown()) << "the person waits no longer";
  ASSERT_TRUE(app.waitForRows(60));
  // A late page does not take the box from whom it stands for now.
  hold("/recent/2");
  app.list().fetchPage(2);
  loading_.showLoadingIndicators();
  ASSERT_TRUE(app.waitForRows(90));
  EXPECT_TRUE(loading_.isShown());
  loading_.hideLoadingIndicators();
}

// The person's computer is off, or in another network, and tells nobody.
TEST_F(GoingOnTest, SendsEndAndAreRememberedLater) {
  std::atomic<bool> held = true;
  const test::RawServer client([&](const test::RecordedRequest&) {
    for (int i = 0; held && i < 500; ++i) {
      std::this_thread::sleep_for(10ms);
    }
    return test::RawServer::response(200);
  });
  ServerInfo& info = ServerInfo::sharedInstance();
  info.setClient("Transmission");
  info.setAddress("127.0.0.1");
  info.setPort(std::to_string(client.port()));
  Application app;
  ASSERT_TRUE(app.waitForRows(30));
  hold("/recent/1");
  app.tapSend(0);
  app.tapSend(1);
  app.list().fetchPage(1);
  ASSERT_TRUE(waitFor([&] { return loading_.canGoOn() && sending_.canGoOn(); }));
  const QQuickItem* box = app.item("sendingOverlay");
  QQuickItem* hint =
      test::itemNamed(app.item("loadingOverlay"), QStringLiteral("loadingHint"), true);
  ASSERT_NE(hint, nullptr);
  EXPECT_LT(hint->mapToScene(QPointF(0, hint->height())).y(), box->y()) << "not below the other";
  // While a torrent's page is waited for, every tap means that.
  loading_.showLoadingIndicators();
  loading_.setHint(QStringLiteral("Tap to stop waiting"));
  EXPECT_FALSE(
      test::itemNamed(app.item("sendingOverlay"), QStringLiteral("goOnButton"))->isVisible());
  app.list().resume();
  app.type(Qt::Key_Escape);
  EXPECT_FALSE(sending_.isShown()) << "the one in front";
  EXPECT_TRUE(loading_.isShown());
  ASSERT_TRUE(goOn(app, loading_, true));
  EXPECT_EQ(app.list().sendingTorrentCount(), 2);
  held = false;
  ASSERT_TRUE(waitFor([&] { return app.list().rows()->torrents()->at(0).isDownloaded; }));
  EXPECT_FALSE(sending_.isShown()) << "nor for the one that is left";
  ASSERT_TRUE(waitFor([&] { return app.list().rows()->torrents()->at(1).isDownloaded; }));
  ASSERT_TRUE(app.waitForRows(60));
  held = true;
  app.tapSend(2);
  EXPECT_TRUE(sending_.isShown()) << "a new send is waited for";
  held = false;
  ASSERT_TRUE(waitFor([&] { return !app.list().hasBackgroundWork() && !sending_.isShown(); }));
}

// The offer neither outlives its box nor passes to the next showing, and waits for its time.
TEST_F(GoingOnTest, AnOfferGoesWithWhatItStoodFor) {
  const VeltramoorAppDelegate delegate;
  int went = 0;
  loading_.offerGoingOn([&] { ++went; });
  loading_.showLoadingIndicators();
  loading_.offerGoingOn([&] { went += 10; });
  loading_.showLoadingIndicators();
  QTest::qWait(400);
  EXPECT_FALSE(loading_.canGoOn());
  loading_.goOn();
  loading_.offerGoingOn([&] { went += 100; });
  EXPECT_TRUE(loading_.canGoOn()) << "the box has been up for long";
  loading_.setHint({});
  EXPECT_FALSE(loading_.hint().isEmpty());
  loading_.goOn();
  loading_.goOn();
  EXPECT_EQ(went, 100);
  EXPECT_EQ(loading_.hint(), QString());
  loading_.offerGoingOn([&] { went += 1000; });
  loading_.hideLoadingIndicators();
  EXPECT_FALSE(loading_.canGoOn());
  loading_.goOn();
  EXPECT_EQ(went, 100);
}

}  // namespace
}  // namespace veltramoor
