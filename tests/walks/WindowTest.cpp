// The real window on the demo site: what a person sees, taps and types.
#include <QElapsedTimer>

#include "lists/FlatTableViewCellView.h"
#include "remote/DownloadHistory.h"
#include "remote/ServerInfo.h"
#include "support/Application.h"
#include "support/ListingPage.h"
#include "support/RawServer.h"
#include "support/ScreenTest.h"
#include "support/TemporaryFolder.h"
#include "support/TransmissionDaemon.h"

namespace veltramoor {
namespace {

using test::Application;
using test::itemNamed;
using test::waitFor;

class WindowTest : public test::ScreenTest {
 protected:
  static void configure(const std::string& port) {
    ServerInfo& info = ServerInfo::sharedInstance();
    info.setClient("Transmission");
    info.setAddress("127.0.0.1");
    info.setPort(port);
  }
};

TEST_F(WindowTest, OneTapSendsARowAndARestartStillMarksIt) {
  const test::TransmissionDaemon daemon;
  const test::TemporaryFolder folder;
  std::optional<Preferences> store(std::in_place, folder / "state.sqlite");
  Preferences::setSharedInstance(&*store);
  configure(daemon.port());
  std::string name;
  {
    Application app;
    ASSERT_TRUE(app.waitForRows(30));
    EXPECT_EQ(app.list().headerView()->usernameLbl()->title(), QStringLiteral("Anonymous"));
    name = app.list().rows()->torrents()->at(2).name;
    bool overlaySeen = false;
    const QMetaObject::Connection watching = QObject::connect(
        app.item("sendingOverlay"), &QQuickItem::visibleChanged,
        [&] { overlaySeen = overlaySeen || app.item("sendingOverlay")->isVisible(); });
    app.tapSend(2);
    ASSERT_TRUE(waitFor([&] { return app.list().rows()->torrents()->at(2).isDownloaded; }));
    EXPECT_TRUE(overlaySeen);
    EXPECT_FALSE(app.item("sendingOverlay")->isVisible());
    QObject::disconnect(watching);
    EXPECT_FALSE(app.alert().isVisible());
    EXPECT_TRUE(itemNamed(app.row(2), QStringLiteral("sentMark"))->isVisible());
    EXPECT_FALSE(itemNamed(app.row(3), QStringLiteral("sentMark"))->isVisible());
  }
  store.reset();
  store.emplace(folder / "state.sqlite");
  EXPECT_EQ(DownloadHistory::names(), std::vector<std::string>{name});
  EXPECT_EQ(daemon.listing().find("Sum:") != std::string::npos, true);
  EXPECT_NE(daemon.listing().find("\n     1"), std::string::npos) << daemon.listing();
  Application again;
  ASSERT_TRUE(again.waitForRows(30));
  EXPECT_TRUE(again.list().rows()->torrents()->at(2).isDownloaded);
  EXPECT_FALSE(again.list().rows()->torrents()->at(3).isDownloaded);
}

TEST_F(WindowTest, AFailedSendShowsOneAlertThatTheKeyboardCloses) {
  configure(std::to_string(test::freePort()));
  Application app;
  ASSERT_TRUE(app.waitForRows(30));
  app.tapSend(0);
  ASSERT_TRUE(waitFor([&] { return app.alert().isVisible(); }));
  EXPECT_TRUE(app.item("alertBox")->isVisible());
  app.click(app.item("refreshBtn"));
  app.type(Qt::Key_F5);
  EXPECT_TRUE(app.list().headerView()->refreshBtn()->isEnabled())
      << "nothing beneath takes taps or keys";
  app.type(Qt::Key_Return);
  EXPECT_FALSE(app.alert().isVisible());
  EXPECT_FALSE(app.item("alertBox")->isVisible());
  ASSERT_TRUE(waitFor([&] { return app.list().sending().count() == 0; }));
}

// A message of any length leaves its button in reach, on the smallest window, too.
TEST_F(WindowTest, ALongAlertIsScrolled) {
  Application app;
  app.window()->resize(320, 480);
  ASSERT_TRUE(app.waitForRows(30));
  Alert alert;
  alert.title = std::string(120, 'T') + " " + std::string(120, 'T');
  alert.message = std::string(2'000'000, 'm');
  alert.buttons = {"OK", "Other"};
  Alerts::show(alert);
  ASSERT_TRUE(app.waitForItem("alertBox"));
  EXPECT_EQ(app.alert().message().size(), AlertView::kLongestMessage + 1);
  QQuickItem* last = app.item("alertButton1");
  EXPECT_TRUE(waitFor([&] {
    return app.window()->height() == 480 && last->height() > 0 &&
           last->mapToScene(QPointF(0, last->height())).y() <= 480;
  }));
  EXPECT_GE(app.item("alertTitle")->mapToScene(QPointF()).y(), 0);
  QQuickItem* scroll = app.item("alertScroll");
  EXPECT_GT(scroll->height(), 40);
  app.type(Qt::Key_Down);
  app.type(Qt::Key_PageDown);
  EXPECT_GT(scroll->property("contentY").toDouble(), 40);
  for (int i = 0; i < 100; ++i) {
    app.type(Qt::Key_PageDown);
  }
  EXPECT_EQ(scroll->property("contentY").toDouble(),
            scroll->property("contentHeight").toDouble() - scroll->height());
  app.click(last);
  EXPECT_FALSE(app.alert().isVisible());
}

TEST_F(WindowTest, ARefreshShowsTheFirstRowBeneathTheHeader) {
  Application app;
  ASSERT_TRUE(app.waitForRows(30));
  for (int i = 0; i < 2; ++i) {
    EXPECT_TRUE(waitFor([&] {
      return app.row(0)->mapToItem(app.item("headerView"), QPointF()).y() == 45;
    })) << "after "
        << i << " refreshes";
    app.item("torrentTable")->setProperty("contentY", 200);
    app.click(app.item("refreshBtn"));
    ASSERT_TRUE(waitFor([&] { return site_.log().size() == static_cast<std::size_t>(2 + i); }));
    ASSERT_TRUE(app.waitForRows(30));
  }
}

TEST_F(WindowTest, AHeldKeySendsOnce) {
  const test::RawServer client([](const test::RecordedRequest&) { return test::RawReply::hang(); });
  configure(std::to_string(client.port()));
  Application app;
  ASSERT_TRUE(app.waitForRows(30));
  app.type(Qt::Key_Home);
  app.hold(Qt::Key_Space);
  EXPECT_EQ(app.list().sending().count(), 1);
}

TEST_F(WindowTest, WorksByKeyboardAlone) {
  const test::RawServer client(
      [](const test::RecordedRequest&) { return test::RawServer::response(200); });
  configure(std::to_string(client.port()));
  Application app;
  ASSERT_TRUE(app.waitForRows(30));
  app.type(Qt::Key_Home);
  app.type(Qt::Key_Tab);
  ASSERT_EQ(app.focused(), "sendButton");
  app.type(Qt::Key_Down);
  app.type(Qt::Key_Space);
  ASSERT_TRUE(waitFor([&] { return app.list().rows()->torrents()->at(1).isDownloaded; }));
  EXPECT_FALSE(app.list().rows()->torrents()->at(0).isDownloaded) << "the ring had moved on";
  for (int i = 0; i < 25; ++i) {
    app.type(Qt::Key_Down);
  }
  EXPECT_TRUE(waitFor([&] {
    return app.row(26)->mapToScene(QPointF(0, 37)).y() <= app.window()->height();
  })) << "the current row stays on the screen";
  app.type(Qt::Key_End);
  app.type(Qt::Key_Return);
  ASSERT_TRUE(app.waitForRows(60)) << "the last row asks for more";
  app.type(Qt::Key_End);
  for (int i = 0; i < 3; ++i) {
    QKeyEvent held(QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier, {}, true);
    QCoreApplication::sendEvent(app.window(), &held);
    EXPECT_FALSE(app.list().hasBackgroundWork()) << "a held key asks for no further page";
  }
  app.type(Qt::Key_F5);
  ASSERT_TRUE(app.waitForRows(30));
}

// A refresh takes the current row away, perhaps while its send button has the focus.
TEST_F(WindowTest, KeysBeginAtTheFirstRowAfterARefresh) {
  Application app;
  ASSERT_TRUE(app.waitForRows(30));
  const auto current = [&] { return app.item("torrentTable")->property("currentIndex").toInt(); };
  for (const bool onItsButton : {false, true}) {
    SCOPED_TRACE(onItsButton);
    app.type(Qt::Key_End);
    app.type(Qt::Key_Up);
    EXPECT_EQ(current(), 29);
    if (onItsButton) {
      app.type(Qt::Key_Tab);
      ASSERT_EQ(app.focused(), "sendButton");
    }
    const std::size_t asked = site_.log().size();
    app.type(Qt::Key_F5);
    ASSERT_TRUE(waitFor([&] { return site_.log().size() == asked + 1; }));
    ASSERT_TRUE(app.waitForRows(30));
    EXPECT_EQ(current(), -1);
    app.type(Qt::Key_Down);
    EXPECT_EQ(current(), 0);
    EXPECT_EQ(app.focused(), "torrentRow");
  }
}

// By touch and wheel a list has no current row; the Tab key takes the first one on show.
TEST_F(WindowTest, TheTabKeyKeepsTheListsPlace) {
  Application app;
  ASSERT_TRUE(app.waitForRows(30));
  ASSERT_NE(app.row(0), nullptr);
  QQuickItem* table = app.item("torrentTable");
  table->setProperty("contentY", 370 - table->property("topMargin").toDouble());
  ASSERT_NE(app.row(20), nullptr);
  app.item("refreshBtn")->forceActiveFocus();
  for (int i = 0; i < 12 && !table->hasActiveFocus(); ++i) {
    app.type(Qt::Key_Tab);
  }
  EXPECT_EQ(table->property("currentIndex").toInt(), 10);
  EXPECT_EQ(table->property("contentY").toDouble(), 370 - table->property("topMargin").toDouble());
}

TEST_F(WindowTest, TheHeaderTakesTouchesOnlyAtItsTop) {
  Application app;
  ASSERT_TRUE(app.waitForRows(30));
  QQuickItem* header = app.item("headerView");
  QQuickItem* table = app.item("torrentTable");
  ASSERT_NE(app.row(0), nullptr);
  // A touched row becomes the current one, and opens nothing.
  app.list().tableView()->setAllowsSelection(false);
  app.click(header, {150, 44});
  EXPECT_EQ(table->property("currentIndex").toInt(), -1);
  app.click(header, {150, 50});
  EXPECT_EQ(table->property("currentIndex").toInt(), 0) << "a touch below goes to the first row";
  for (const QSize size : {QSize(360, 720), QSize(768, 1024), QSize(500, 480), QSize(1000, 500)}) {
    app.window()->resize(size);
    ASSERT_TRUE(waitFor([&] { return header->width() == std::min(size.width(), 900); }));
    EXPECT_EQ(app.row(0)->mapToItem(header, QPointF()).y(), 45)
        << "no row hides under the header at a width of " << size.width();
  }
}

TEST_F(WindowTest, TheSettingsChangeWhatTheNextRequestAsksFor) {
  Application app;
  ASSERT_TRUE(app.waitForRows(30));
  app.click(app.item("settingsBtn"));
  ASSERT_TRUE(waitFor([&] { return app.item("groupWheel") != nullptr; }));
  EXPECT_TRUE(app.item("navigationBar")->isVisible());
  EXPECT_EQ(store_.string("Veltramoor_recentCategory"), "0") << "opening alone stores this";
  EXPECT_EQ(store_.string("Veltramoor_recentOrderBy"), std::nullopt);
  QQuickItem* groups = app.item("groupWheel");
  groups->forceActiveFocus();
  app.type(Qt::Key_Down);
  app.type(Qt::Key_Down);
  EXPECT_EQ(store_.string("Veltramoor_recentCategory"), "200");
  app.item("memberWheel")->forceActiveFocus();
  for (int i = 0; i < 5; ++i) {
    app.type(Qt::Key_Down);
  }
  EXPECT_EQ(store_.string("Veltramoor_recentCategory"), "205");
  app.click(app.item("orderControl2"));
  app.click(app.item("sortControl1"));
  EXPECT_EQ(store_.string("Veltramoor_recentOrderBy"), "7");
  app.item("groupWheel")->forceActiveFocus();
  app.type(Qt::Key_Escape);
  ASSERT_TRUE(waitFor([&] { return app.item("groupWheel") == nullptr; }));
  EXPECT_FALSE(app.item("navigationBar")->isVisible());
  EXPECT_EQ(site_.log().size(), 1U) << "coming back fetches nothing";
  app.click(app.item("refreshBtn"));
  ASSERT_TRUE(waitFor([&] { return site_.log().size() == 2; }));
  EXPECT_EQ(site_.log().back().target, "/browse/205/0/8/");
  ASSERT_TRUE(waitFor([&] { return app.list().tableView()->allowsSelection(); }));
}

// 3,000 rows from end to end: what is drawn with is a screenful, whatever the list holds.
TEST_F(WindowTest, ReusesItsRows) {
  const test::RawServer pages([](const test::RecordedRequest&) {
    return test::RawServer::response(
        200, test::listingPage(std::vector<std::string>(3000, "N <b>x</b>")));
  });
  SiteConfiguration configuration;
  configuration.siteHost = pages.hostAndPort();
  SiteConfiguration::setCurrent(configuration);
  const int before = FlatTableViewCellView::createdCount();
  Application app;
  ASSERT_TRUE(app.waitForRows(3000));
  auto* table = app.item("torrentTable");
  // A list that is moved before it has its first rows would make all those above as well.
  ASSERT_NE(app.row(0), nullptr);
  for (int at = 0; at < 3000; at += 8) {
    table->setProperty("contentY", at * AllListViewController::kRowHeight);
    ASSERT_NE(app.row(at), nullptr);
  }
  const int created = FlatTableViewCellView::createdCount() - before;
  const int rowsOnScreen =
      static_cast<int>(app.window()->height() / AllListViewController::kRowHeight);
  EXPECT_GE(created, rowsOnScreen);
  EXPECT_LT(created, 3 * rowsOnScreen + 40);
  table->setProperty("currentIndex", 2999);
  ASSERT_NE(app.row(2999), nullptr);
  EXPECT_TRUE(
      app.row(2999)->property("summary").toString().startsWith(QStringLiteral("N <b>x</b>")))
      << "markup in a name is text";
}

TEST_F(WindowTest, ClosesSoonWhileAServerHangs) {
  site_.setFault("/recent", Fault{FaultKind::Hang, {}, 0});
  QElapsedTimer closing;
  {
    Application app;
    ASSERT_TRUE(waitFor([&] { return site_.log().size() == 1; }));
    closing.start();
  }
  EXPECT_LT(closing.elapsed(), 3000) << "about one second; the transfer's own limit is a minute";
}

}  // namespace
}  // namespace veltramoor
