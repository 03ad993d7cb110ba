// A wait that has become long, and the person who goes on meanwhile.
#include "lists/EditFavoriteListViewController.h"
#include "lists/FavoriteListViewController.h"
#include "lists/SearchListViewController.h"
#include "remote/ServerInfo.h"
#include "shell/overlay/SendingTorrentIndicator.h"
#include "site/UserInfo.h"
#include "support/Application.h"
#include "support/RawServer.h"
#include "support/ScreenTest.h"
#include "toolkit/Presentation.h"

namespace veltramoor {
namespace {

using namespace std::chrono_literals;
using test::Application;
using test::waitFor;

class GoingOnTest : public test::ScreenTest {
 protected:
  GoingOnTest() { setPatience(300ms); }
  ~GoingOnTest() override { setPatience(usual_); }

  void setPatience(std::chrono::milliseconds patience) {
    loading_.setPatience(patience);
    sending_.setPatience(patience);
  }
  // Has the site take its time once.
  void hold(const std::string& path, std::chrono::milliseconds delay = 2s) {
    site_.setFault(path, Fault{FaultKind::None, delay, 1});
  }
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

  const std::chrono::milliseconds usual_ = LoadingIndicator::current().patience();
  LoadingIndicator& loading_ = LoadingIndicator::current();
  LoadingIndicator& sending_ = SendingTorrentIndicator::current();
};

TEST_F(GoingOnTest, FromAFirstPageToAnotherTabAndBack) {
  setPatience(1s);
  store_.setString("Veltramoor_automaticLogin", "YES");
  hold("/recent/0", 3s);
  Application app(nullptr);
  ASSERT_TRUE(app.waitForItem("tabBar"));
  EXPECT_TRUE(loading_.isShown()) << "the list's own, after the login's";
  EXPECT_EQ(loading_.shownText(), QStringLiteral("Loading..."));
  app.type(Qt::Key_Escape);
  app.click(app.item("loadingOverlay"));
  EXPECT_TRUE(loading_.isShown()) << "too early to be meant";
  EXPECT_FALSE(app.item("tab3")->isEnabled());
  ASSERT_TRUE(goOn(app, loading_, false));
  auto* recent = qobject_cast<AllListViewController*>(
      qobject_cast<NavigationController*>(app.root().tabBarController()->selectedViewController())
          ->topViewController());
  ASSERT_NE(recent, nullptr);
  EXPECT_TRUE(recent->hasBackgroundWork()) << "the page is still under way";
  app.click(app.item("tab2"));
  EXPECT_EQ(app.root().tabBarController()->selectedIndex(), 2);
  EXPECT_FALSE(loading_.isShown());
  app.click(app.item("tab0"));
  EXPECT_TRUE(loading_.isShown()) << "there is nothing to show yet";
  ASSERT_TRUE(waitFor([&] { return !app.root().hasBackgroundWork() && !loading_.isShown(); }));
  EXPECT_NE(app.row(0), nullptr) << "it came";
  EXPECT_EQ(recent->rows()->torrentCount(), 30) << "once";
}

// What a tab still fetches is neither in the way of another one nor freed by it.
TEST_F(GoingOnTest, ALatePageFreesNoOtherTab) {
  setPatience(200ms);
  store_.setString("Veltramoor_automaticLogin", "YES");
  hold("/recent/0", 1s);
  hold("/top/all", 3s);
  Application app(nullptr);
  ASSERT_TRUE(app.waitForItem("tabBar"));
  ASSERT_TRUE(goOn(app, loading_, false));
  setPatience(10s);
  const std::size_t before = site_.log().size();
  app.click(app.item("tab3"));
  const auto* tabs = app.root().tabBarController();
  auto* recent = qobject_cast<AllListViewController*>(
      qobject_cast<NavigationController*>(tabs->viewControllers().front().get())
          ->topViewController());
  ASSERT_TRUE(waitFor([&] { return recent->rows()->torrentCount() == 30; }));
  EXPECT_TRUE(loading_.isShown());
  EXPECT_FALSE(app.item("tab0")->isEnabled());
  ASSERT_TRUE(waitFor([&] { return !app.root().hasBackgroundWork(); }));
  EXPECT_TRUE(waitFor([&] { return app.item("tab0")->isEnabled() && !loading_.isShown(); }));
  EXPECT_GT(site_.log().size(), before);
}

// The first list appears behind a remembered tab.
TEST_F(GoingOnTest, AListBehindAnotherScreenHoldsNothing) {
  store_.setString("Veltramoor_automaticLogin", "YES");
  store_.setNumber("Veltramoor_tab", 3);
  hold("/recent/0", 5s);
  hold("/top/all", 2s);
  Application app(nullptr);
  ASSERT_TRUE(app.waitForItem("tabBar"));
  EXPECT_FALSE(app.item("tab0")->isEnabled());
  ASSERT_TRUE(goOn(app, loading_, true)) << "of the one on show";
  EXPECT_TRUE(app.item("tab0")->isEnabled());
  EXPECT_TRUE(app.root().hasBackgroundWork());
  app.root().logout();
  loading_.showLoadingIndicators();
  loading_.hideLoadingIndicators();
  EXPECT_FALSE(loading_.isShown()) << "nobody waits on the login screen";
  app.root().switchViews();
  app.click(app.item("tab0"));
  EXPECT_TRUE(loading_.isShown());
  ASSERT_TRUE(waitFor([&] { return !app.root().hasBackgroundWork() && !loading_.isShown(); }));
}

// The key means what lies in front, one thing at a time; the bar has the keyboard again when the
// form over it has gone.
TEST_F(GoingOnTest, EscapeLeavesWhatIsInFront) {
  const auto list = std::make_shared<SearchListViewController>(TableViewStyle::Plain);
  hold("/search/the");
  Application app(std::make_shared<NavigationController>(list));
  list->searchBar()->setText("the");
  list->searchBarSearchButtonClicked();
  app.click(app.item("searchBarInput"));
  Presentation& form = Presentation::sharedInstance();
  const auto filters = std::make_shared<EditFavoriteListViewController>(TableViewStyle::Plain);
  form.present(std::make_shared<FavoriteComposeViewController>(filters));
  ASSERT_TRUE(waitFor([&] { return loading_.canGoOn(); }));
  Alerts::showMessage("Title", "in front of all");
  ASSERT_TRUE(app.waitForItem("alertBox"));
  const auto there = [&] {
    return std::string(app.alert().isVisible() ? "alert " : "") +
           (form.controller() != nullptr ? "form " : "") + (loading_.isShown() ? "wait " : "") +
           (list->searchBar()->isEditing() ? "bar " : "");
  };
  for (const char* left : {"alert form wait ", "form wait ", "wait bar ", "bar ", "", ""}) {
    EXPECT_EQ(there(), left);
    app.type(Qt::Key_Escape);
  }
  EXPECT_TRUE(list->hasBackgroundWork()) << "the page still comes";
  ASSERT_TRUE(app.waitForRows(30));
}

TEST_F(GoingOnTest, AnotherSearchIsShownAtOnceAndAlone) {
  const auto list = std::make_shared<SearchListViewController>(TableViewStyle::Plain);
  hold("/search/the", 1s);
  Application app(std::make_shared<NavigationController>(list));
  list->searchBar()->setText("the");
  list->searchBarSearchButtonClicked();
  ASSERT_TRUE(goOn(app, loading_, true));
  list->searchBar()->setText("orchard");
  list->searchBarSearchButtonClicked();
  EXPECT_TRUE(loading_.isShown());
  list->searchBar()->setText("typed since");
  ASSERT_TRUE(waitFor([&] { return !list->hasBackgroundWork() && !loading_.isShown(); }));
  EXPECT_EQ(site_.log().back().target, "/search/orchard/0/99/0");
  EXPECT_EQ(list->rows()->torrentCount(), 30);
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
  EXPECT_TRUE(waitFor([&] { return list->rows()->torrentCount() == 30; }))
      << "the first page has replaced the rows";
  ASSERT_TRUE(app.waitForRows(90));
  EXPECT_EQ(list->notice(), QString());
}

// What was shown in between took the box, the offer with it.
TEST_F(GoingOnTest, AListThatStillWaitsTakesItsOverlayBack) {
  Application app;
  ASSERT_TRUE(app.waitForRows(30));
  hold("/recent/1");
  app.list().fetchPage(1);
  loading_.showLoadingIndicators();
  loading_.hideLoadingIndicators();
  EXPECT_TRUE(loading_.isShown());
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

// Whoever opens another screen of the list no longer waits for its pages.
TEST_F(GoingOnTest, AScreenOnTopHasTheOverlayToItself) {
  Application app;
  ASSERT_TRUE(app.waitForRows(30));
  UserInfo::sharedInstance().setUsername("anna");
  AllListViewController& list = app.list();
  hold("/recent/1", 1s);
  hold("/settings", 3s);
  list.fetchPage(1);
  list.didSelectProfile(std::nullopt);
  ASSERT_TRUE(waitFor([&] { return list.rows()->torrentCount() == 60; }));
  EXPECT_TRUE(loading_.isShown()) << "the profile is still fetched";
  EXPECT_FALSE(loading_.canGoOn());
  ASSERT_TRUE(waitFor([&] { return !loading_.isShown(); }));
  list.cancel();
  list.navigationController()->popViewController();
  site_.setFault("/torrent", Fault{FaultKind::Close, {}, 0});
  hold("/recent/2", 2s);
  list.fetchPage(2);
  list.tableView()->setAllowsSelection(true);  // As the end of a send leaves it.
  list.didSelectRowAtIndexPath(0);
  EXPECT_FALSE(loading_.isShown()) << "the page that did not come says so itself";
  ASSERT_TRUE(waitFor([&] { return list.rows()->torrentCount() == 90; }));
  UserInfo::sharedInstance().setUsername("Anonymous");
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
  sendTo(client);
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
  loading_.hideLoadingIndicators();
  app.type(Qt::Key_Escape);
  EXPECT_FALSE(sending_.isShown()) << "the one in front";
  EXPECT_TRUE(loading_.isShown());
  ASSERT_TRUE(goOn(app, loading_, true));
  EXPECT_EQ(app.list().sending().count(), 2);
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

TEST_F(GoingOnTest, OneListsSendLeavesTheOverlayToAnothers) {
  std::atomic<int> adds = 0;
  std::atomic<int> answered = 0;
  const test::RawServer client([&](const test::RecordedRequest& request) {
    const int number = request.method == "POST" ? ++adds : 0;
    for (int i = 0; answered < number && i < 500; ++i) {
      std::this_thread::sleep_for(10ms);
    }
    return test::RawServer::response(200);
  });
  sendTo(client);
  Application app;
  ASSERT_TRUE(app.waitForRows(30));
  const auto other = std::make_shared<AllListViewController>(TableViewStyle::Plain);
  other->fetchPage(0);
  ASSERT_TRUE(waitFor([&] { return !other->hasBackgroundWork() && other->rows()->torrents(); }));
  app.list().didTapDownloadButton(0);
  ASSERT_TRUE(waitFor([&] { return adds == 1; }));
  other->didTapDownloadButton(0);
  ASSERT_TRUE(waitFor([&] { return adds == 2; }));
  answered = 1;
  ASSERT_TRUE(waitFor([&] { return app.list().sending().count() == 0; }));
  EXPECT_TRUE(sending_.isShown());
  answered = 2;
  ASSERT_TRUE(waitFor([&] { return other->sending().count() == 0; }));
  EXPECT_FALSE(sending_.isShown());
}

// The offer neither outlives its box nor passes to the next showing, and waits for its time.
TEST_F(GoingOnTest, AnOfferGoesWithWhatItStoodFor) {
  const VeltramoorAppDelegate delegate;
  int went = 0;
  loading_.offerGoingOn([&] { ++went; });
  loading_.showLoadingIndicators();
  loading_.offerGoingOn([&] { went += 10; });
  loading_.showLoadingIndicators();
  sending_.setPatience(2 * loading_.patience());
  sending_.showLoadingIndicators();
  sending_.offerGoingOn([] {});
  ASSERT_TRUE(waitFor([&] { return sending_.canGoOn(); })) << "an offer that was due later";
  sending_.hideLoadingIndicators();
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
