// Everything that a finger can do, by keys; and a window of any size.
#include "lists/SearchListViewController.h"
#include "shell/WindowSize.h"
#include "support/ListingPage.h"
#include "support/WebTest.h"

namespace veltramoor {
namespace {

using test::Application;
using test::waitFor;

class KeysTest : public test::WebTest {
 protected:
  static void press(const Application& app, Qt::Key key, Qt::KeyboardModifiers modifiers) {
    QTest::keyClick(app.window(), key, modifiers);
  }
  static bool isSelected(Application& app, int index) {
    return waitFor([&] { return app.root().tabBarController()->selectedIndex() == index; });
  }
};

TEST_F(KeysTest, LeadFromTabToTabAndToTheSearchFieldFromEverywhere) {
  pages_.set("/recent/0", test::listingPage({"Name 0", "Name 1"}, "magnet:?xt=a"));
  pages_.set("/", "<p>home</p>");
  Application app(nullptr);
  ASSERT_TRUE(waitFor([&] { return app.focused() == "loginBtn"; })) << app.focused();
  press(app, Qt::Key_F, Qt::ControlModifier);
  app.type(Qt::Key_Return);
  ASSERT_TRUE(app.waitForItem("tabBar"));
  const auto idle = [&] {
    return waitFor([&] {
      return app.root().tabBarController()->viewControllers().front()->tabBarItem()->isEnabled();
    });
  };
  ASSERT_TRUE(idle());
  press(app, Qt::Key_3, Qt::ControlModifier);
  ASSERT_TRUE(isSelected(app, 2));
  EXPECT_EQ(app.focused(), "searchBarInput") << "an empty search takes what is typed";
  app.typeText("a?");
  EXPECT_EQ(app.item("searchBarInput")->property("text").toString(), QStringLiteral("a?"));
  press(app, Qt::Key_1, Qt::ControlModifier);
  ASSERT_TRUE(isSelected(app, 0));
  EXPECT_EQ(app.focused(), "torrentTable");
  const std::size_t hits = pages_.hits("/recent/0");
  press(app, Qt::Key_R, Qt::ControlModifier);
  EXPECT_TRUE(waitFor([&] { return pages_.hits("/recent/0") == hits + 1; }));
  ASSERT_TRUE(idle());
  app.type(Qt::Key_Question);
  ASSERT_TRUE(app.waitForItem("keySheet"));
  press(app, Qt::Key_3, Qt::ControlModifier);
  EXPECT_TRUE(isSelected(app, 0)) << "beneath the sheet nothing takes keys";
  app.type(Qt::Key_Escape);
  EXPECT_FALSE(app.item("modalScreen")->hasActiveFocus());
  EXPECT_EQ(app.focused(), "torrentTable");
  press(app, Qt::Key_9, Qt::ControlModifier);
  ASSERT_TRUE(app.waitForItem("moreTable"));
  EXPECT_EQ(app.focused(), "moreTable");
  press(app, Qt::Key_F, Qt::ControlModifier);
  ASSERT_TRUE(isSelected(app, 2));
  EXPECT_EQ(app.focused(), "searchBarInput");
  EXPECT_EQ(app.item("searchBarInput")->property("text").toString(), QStringLiteral("a?"));
  auto* search = qobject_cast<NavigationController*>(
      app.root().tabBarController()->viewControllers()[2].get());
  qobject_cast<AllListViewController*>(search->topViewController())->didSettings();
  press(app, Qt::Key_1, Qt::ControlModifier);
  press(app, Qt::Key_F, Qt::ControlModifier);
  EXPECT_EQ(search->depth(), 1);
  EXPECT_EQ(app.focused(), "searchBarInput");
  Announcements::sharedInstance().say(QStringLiteral("Sent a"));
  PopupMenu::sharedInstance().open(search, {}, QStringLiteral("a"),
                                   {{QStringLiteral("Send"), [] {}}});
  app.root().logout();
  EXPECT_FALSE(PopupMenu::sharedInstance().isOpen());
  EXPECT_EQ(Announcements::sharedInstance().text(), QString());
}

TEST_F(KeysTest, GoOnAtTheFirstRowThatLoadMoreBrought) {
  const auto page = [](const std::string& word) {
    std::vector<std::string> names(30);
    for (std::size_t i = 0; i < names.size(); ++i) {
      names[i] = word + std::to_string(i);
    }
    return test::listingPage(names, "magnet:?xt=a");
  };
  pages_.set("/recent/0", page("first"));
  pages_.set("/recent/1", page("second"));
  pages_.set("/recent/2", test::listingPage({}, ""));
  Application app;
  ASSERT_TRUE(app.waitForRows(30));
  QQuickItem* table = app.item("torrentTable");
  const auto inSight = [&](int row) {
    const double y = app.row(row)->mapToItem(table, QPointF()).y();
    return y >= 0 && y + 37 <= table->height();
  };
  app.type(Qt::Key_End);
  app.type(Qt::Key_Return);
  ASSERT_TRUE(app.waitForRows(60));
  // The view may still have to make its own of the new rows.
  for (int i = 0; i < 20; ++i) {
    QMetaObject::invokeMethod(table, "forceLayout");
    QCoreApplication::processEvents();
  }
  EXPECT_EQ(table->property("currentIndex").toInt(), 30);
  EXPECT_TRUE(inSight(30));
  app.type(Qt::Key_Down);
  EXPECT_EQ(table->property("currentIndex").toInt(), 31);
  app.type(Qt::Key_End);
  app.type(Qt::Key_Return);
  ASSERT_TRUE(waitFor([&] { return app.list().noMoreTorrents(); }));
  app.type(Qt::Key_Up);
  EXPECT_EQ(app.focused(), "torrentRow");
  const int current = table->property("currentIndex").toInt();
  EXPECT_TRUE(current == 58 || current == 59) << current;
}

TEST_F(KeysTest, AndAMousesOwnButtonsGoAlongAPagesHistory) {
  pages_.set("/recent/0", test::listingPage({"Name 0"}, "magnet:?xt=a"));
  pages_.set("/torrent/1/a",
             "<!DOCTYPE html><html><head><title>Details</title></head><body>"
             "<div id=\"detailsframe\"><a id=next href=/next>next</a>"
             "<div id=\"comments\"></div></div></body></html>");
  pages_.set("/next", "<title>Next</title><p>there</p><input id=typed>");
  Application app;
  ASSERT_TRUE(app.waitForRows(1));
  NavigationController* navigation = app.list().navigationController();
  app.click(app.row(0), {60, 15});
  auto* screen = qobject_cast<WebViewController*>(navigation->topViewController());
  ASSERT_NE(screen, nullptr);
  watch(*screen);
  ASSERT_TRUE(waitForValue(*screen, "document.title", "Details"));
  tap(app, *screen, "next");
  ASSERT_TRUE(waitForValue(*screen, "document.title", "Next"));
  ASSERT_TRUE(waitFor([&] { return !screen->myWebView()->isLoading(); }));
  const std::size_t hits = pages_.hits("/next");
  tap(app, *screen, "typed");
  press(app, Qt::Key_F5, {});
  EXPECT_TRUE(waitFor([&] { return pages_.hits("/next") == hits + 1; }));
  EXPECT_EQ(pages_.last("/next").method, "GET");
  ASSERT_TRUE(waitFor([&] { return !screen->myWebView()->isLoading(); }));
  press(app, Qt::Key_Left, Qt::AltModifier);
  ASSERT_TRUE(waitForValue(*screen, "document.title", "Details"));
  ASSERT_TRUE(waitFor([&] { return !screen->myWebView()->isLoading(); }));
  const std::size_t details = pages_.hits("/torrent/1/a");
  press(app, Qt::Key_R, Qt::ControlModifier);
  EXPECT_TRUE(waitFor([&] { return pages_.hits("/torrent/1/a") == details + 1; }));
  EXPECT_TRUE(waitFor([] { return !isOverlayShown(); }));
}

TEST(WindowSizeTest, IsRememberedAndRefusesNonsense) {
  Preferences store(std::nullopt);
  Preferences::setSharedInstance(&store);
  EXPECT_FALSE(storedWindowSize());
  storeWindowSize({720, 360});
  EXPECT_EQ(storedWindowSize(), QSize(720, 360));
  for (const char* wrong :
       {"", "720", "720x", "720x360x1", "0x0", "99999x720", "-720x360", "319x300"}) {
    store.setString("Veltramoor_windowSize", wrong);
    EXPECT_FALSE(storedWindowSize()) << wrong;
  }
  Preferences::setSharedInstance(nullptr);
}

class SizesTest : public test::ScreenTest {};

// From a phone on its side to a large desktop: bar and four rows in sight, everything inside.
TEST_F(SizesTest, KeepTheTabBarAndFourRowsInSight) {
  Application app(nullptr);
  app.click(app.item("loginBtn"));
  ASSERT_TRUE(app.waitForItem("tabBar"));
  ASSERT_TRUE(waitFor([&] { return app.item("torrentTable")->property("count").toInt() == 31; }));
  for (const QSize size : {QSize(320, 300), QSize(720, 300), QSize(320, 568), QSize(480, 320),
                           QSize(768, 1024), QSize(1280, 800), QSize(2560, 1440)}) {
    SCOPED_TRACE(testing::Message() << size.width() << 'x' << size.height());
    app.window()->resize(size);
    for (const int tab : {0, 2}) {
      app.root().tabBarController()->setSelectedIndex(static_cast<std::uint64_t>(tab));
      ASSERT_TRUE(waitFor([&] {
        return app.window()->size() == size &&
               app.item("column")->size() == QSizeF(std::min(size.width(), 900), size.height());
      }));
      const QQuickItem* table = app.item("torrentTable");
      const double foot = app.item("tabBar")->mapToScene(QPointF()).y();
      EXPECT_EQ(foot + 49, size.height());
      const double top = table->mapToScene(QPointF()).y() + (tab == 0 ? 11 : 0);
      EXPECT_GE(foot - top, 4 * 37);
      const QQuickItem* banner = app.item("banner");
      EXPECT_LE(banner->mapToScene(QPointF(0, banner->height())).y(),
                app.item("headerView")->mapToScene(QPointF()).y());
    }
  }
}

// A keyboard that lies over the window hides no field that is typed in.
TEST_F(SizesTest, AFormScrollsToItsFieldAboveTheKeyboard) {
  Application app(nullptr);
  app.window()->resize(320, 300);
  app.click(app.item("anonymousLogin"));
  app.click(app.item("usernameInput"));
  Device::sharedInstance().setKeyboardShown(true);
  Device::sharedInstance().setKeyboardCover(180);
  for (const char* field : {"usernameInput", "passwordInput"}) {
    app.click(app.item(field));
    EXPECT_TRUE(waitFor([&] {
      const QQuickItem* input = app.item(field);
      return input->mapToScene(QPointF(0, input->height())).y() <= 120 &&
             input->mapToScene(QPointF()).y() >= 0;
    })) << field;
    app.type(Qt::Key_Tab);
  }
  Device::sharedInstance().setKeyboardCover(0);
  Device::sharedInstance().setKeyboardShown(false);
}

}  // namespace
}  // namespace veltramoor
