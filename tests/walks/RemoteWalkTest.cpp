// From the remote settings to the client's own page and to a logout, by taps and keys alone.
#include "remote/ServerInfo.h"
#include "support/TransmissionDaemon.h"
#include "support/WebTest.h"
#include "toolkit/TabBarController.h"

namespace veltramoor {
namespace {

using test::Application;
using test::waitFor;

class RemoteWalkTest : public test::WebTest {
 protected:
  RemoteWalkTest() {
    configuration_.siteHost = site_.host();
    configuration_.noticeHost = site_.host();
    configuration_.forumHost = site_.host();
    SiteConfiguration::setCurrent(configuration_);
    Device::sharedInstance().setReducedMotion(true);
  }
  ~RemoteWalkTest() override {
    CookieStorage::sharedInstance().erase({"127.0.0.1", ".127.0.0.1"});
    Device::sharedInstance().setReducedMotion(false);
  }

  void tapOn(const QString& name) {
    QQuickItem* found = nullptr;
    ASSERT_TRUE(waitFor([&] {
      found = app_.item(name.toLatin1());
      return found != nullptr && found->isVisible() && found->isEnabled();
    })) << name.toStdString();
    app_.click(found);
  }
  /// Opens the tab by its row in "More".
  void openTab(int row) {
    TabBarController& tabs = *app_.root().tabBarController();
    ASSERT_TRUE(waitFor([&] { return tabs.viewControllers().front()->tabBarItem()->isEnabled(); }));
    tapOn(QStringLiteral("tab4"));
    tapOn(QStringLiteral("moreRow%1").arg(row));
  }
  void fillIn(const char* field, const std::string& text) {
    tapOn(QLatin1String(field));
    QTest::keyClick(app_.window(), Qt::Key_A, Qt::ControlModifier);
    app_.typeText(text.c_str());
  }
  [[nodiscard]] WebViewController* webScreen() {
    TabBarController& tabs = *app_.root().tabBarController();
    for (const auto& tab : tabs.viewControllers()) {
      auto* stack = qobject_cast<NavigationController*>(tab.get());
      if (stack == tabs.selectedViewController()) {
        return qobject_cast<WebViewController*>(stack->topViewController());
      }
    }
    return nullptr;
  }
  /// Waits until the screen on show has a page in which `source` is `expected`.
  void expectPage(const std::string& source, const std::string& expected) {
    WebViewController* screen = nullptr;
    ASSERT_TRUE(waitFor([&] {
      screen = webScreen();
      return screen != nullptr && screen->myWebView() != nullptr &&
             !screen->myWebView()->isLoading() && !isOverlayShown();
    })) << source;
    EXPECT_TRUE(app_.waitForItem("webView"));
    EXPECT_TRUE(waitForValue(*screen, source, expected));
  }

  Application app_{nullptr};
};

TEST_F(RemoteWalkTest, SettingsTestPageBackAndLogout) {
  // A password that no address can hold.
  const std::string password = "p#1/2@x y";
  const test::TransmissionDaemon daemon(std::pair<std::string, std::string>("anna", password));
  ASSERT_TRUE(app_.waitForItem("loginView"));
  app_.click(app_.item("loginBtn"));
  ASSERT_TRUE(app_.waitForItem("tabBar"));

  openTab(4);
  tapOn(QStringLiteral("serverClient1"));
  fillIn("serverAddress", "127.0.0.1");
  fillIn("serverPort", daemon.port());
  fillIn("serverUser", "anna");
  fillIn("serverPassword", "wrong");
  tapOn(QStringLiteral("testButton"));
  ASSERT_TRUE(waitFor([&] { return app_.alert().isVisible(); }));
  EXPECT_EQ(app_.alert().title(), QStringLiteral("Connection with server failed."));
  tapOn(QStringLiteral("alertButton0"));
  // Back at the settings, which say what is wrong with them.
  QQuickItem* step = nullptr;
  ASSERT_TRUE(waitFor([&] { return (step = app_.item("diagnosisStep5")) != nullptr; }));
  EXPECT_TRUE(step->property("text").toString().startsWith(QStringLiteral("The user name or")));
  EXPECT_FALSE(isOverlayShown());
  fillIn("serverPassword", password);
  tapOn(QStringLiteral("testButton"));
  ASSERT_TRUE(waitFor([&] { return app_.alert().isVisible(); }));
  EXPECT_EQ(app_.alert().title(), QStringLiteral("Success!"));
  tapOn(QStringLiteral("alertButton0"));
  // Whatever version it is of.
  const std::string ratio =
      "'' + (document.querySelectorAll('#torrent_list, #torrent-list').length > 0)";
  expectPage(ratio, "true");
  expectPage("'' + document.documentElement.outerHTML.includes('p#1')", "false");
  tapOn(QStringLiteral("webBackButton"));
  EXPECT_TRUE(waitFor([&] { return app_.item("serverSettings")->isVisible(); }));

  openTab(3);
  expectPage(ratio, "true");
  openTab(1);
  expectPage("location.host", site_.host());
  openTab(5);
  expectPage("location.host", site_.host());
  openTab(4);
  tapOn(QStringLiteral("testButton"));
  ASSERT_TRUE(waitFor([&] { return app_.alert().isVisible(); }));
  tapOn(QStringLiteral("alertButton0"));
  expectPage(ratio, "true");

  TabBarController& tabs = *app_.root().tabBarController();
  openTab(6);
  ASSERT_TRUE(app_.waitForItem("loginView"));
  EXPECT_FALSE(isOverlayShown());
  for (const auto& tab : tabs.viewControllers()) {
    if (auto* stack = qobject_cast<NavigationController*>(tab.get())) {
      EXPECT_EQ(stack->depth(), 1);
      if (auto* screen = qobject_cast<WebViewController*>(stack->topViewController())) {
        EXPECT_EQ(screen->myWebView(), nullptr) << screen->tabBarItem()->title().toStdString();
      }
    }
  }
  EXPECT_TRUE(waitFor([&] { return app_.item("webView") == nullptr; })) << "no page is left";

  app_.click(app_.item("loginBtn"));
  ASSERT_TRUE(app_.waitForItem("tabBar"));
  openTab(1);
  expectPage("location.host", site_.host());
}

}  // namespace
}  // namespace veltramoor
