// The application as a person meets it, in the real window: start, login, tabs, logout.
#include "platform/Bundle.h"
#include "platform/CookieStorage.h"
#include "remote/ServerInfo.h"
#include "site/UserInfo.h"
#include "support/Application.h"
#include "support/ScreenTest.h"

namespace veltramoor {
namespace {

using test::Application;
using test::waitFor;

class ShellTest : public test::ScreenTest {
 protected:
  ShellTest() {
    SiteConfiguration configuration = SiteConfiguration::current();
    configuration.noticeHost = site_.host();
    SiteConfiguration::setCurrent(configuration);
    Device::sharedInstance().setReducedMotion(true);
  }
  ~ShellTest() override {
    clearCookies();
    Device::sharedInstance().setReducedMotion(false);
  }

  static void clearCookies() {
    CookieStorage::sharedInstance().erase({"127.0.0.1", ".127.0.0.1", "other.example"});
  }
  // Nothing under way, and the tabs can be chosen again.
  static bool idle(Application& app) {
    return waitFor([&] {
      const TabBarController* tabs = app.root().tabBarController();
      return !app.root().hasBackgroundWork() && tabs != nullptr &&
             tabs->viewControllers().front()->tabBarItem()->isEnabled();
    });
  }
  // The name of the session's cookie as the store holds it.
  static std::size_t sessionCookies() {
    std::size_t count = 0;
    for (const Cookie& cookie : CookieStorage::sharedInstance().cookies()) {
      count += static_cast<std::size_t>(cookie.name == "uid");
    }
    return count;
  }
  // The second start: the session and the tab survived, and a logout ends the one and not more.
  void logsOut(std::size_t loginsBefore) {
    Application again(nullptr);
    ASSERT_TRUE(again.waitForItem("tabBar")) << "automatic login";
    EXPECT_EQ(logins(), loginsBefore) << "the session survived";
    ASSERT_TRUE(idle(again));
    TabBarController* tabs = again.root().tabBarController();
    EXPECT_EQ(tabs->selectedIndex(), 3) << "the tab was remembered";
    LoginViewController* first = again.root().loginViewController();
    tabs->choose(tabs->viewControllers().back().get());
    ASSERT_TRUE(again.waitForItem("loginView"));
    EXPECT_FALSE(again.item("tabBar")->isVisible());
    EXPECT_NE(again.root().loginViewController(), first) << "a fresh login screen";
    EXPECT_EQ(store_.number("Veltramoor_tab"), 0) << "the next start must not log out again";
    EXPECT_EQ(sessionCookies(), 0U);
    bool kept = false;
    for (const Cookie& cookie : CookieStorage::sharedInstance().cookies()) {
      kept = kept || cookie.domain == "other.example";
    }
    EXPECT_TRUE(kept);
    EXPECT_TRUE(again.root().loginViewController()->automaticLogin()->isOn());
    EXPECT_FALSE(again.root().hasBackgroundWork()) << "no login by itself after a logout";
    again.click(again.item("loginBtn"));
    ASSERT_TRUE(again.waitForItem("tabBar"));
    EXPECT_EQ(again.root().tabBarController(), tabs) << "the tabs were kept";
    EXPECT_EQ(tabs->selectedIndex(), 0);
    ASSERT_TRUE(idle(again));
  }

  [[nodiscard]] std::size_t logins() const {
    std::size_t count = 0;
    for (const DemoRequest& request : site_.log()) {
      count += static_cast<std::size_t>(request.target == "/login");
    }
    return count;
  }
};

TEST_F(ShellTest, FromTheFirstStartToTheLogout) {
  store_.setNumber("Veltramoor_tab", 99);
  clearCookies();
  CookieStorage::sharedInstance().insert({"keep", "me", "other.example"});
  {
    Application app(nullptr);
    EXPECT_EQ(store_.string("Veltramoor_version"), Bundle::version());
    ASSERT_TRUE(app.waitForItem("loginView"));
    EXPECT_EQ(app.item("tabBar"), nullptr);
    // Anonymous off, automatic on, the wrong password by keyboard.
    app.click(app.item("anonymousLogin"));
    app.click(app.item("automaticLogin"));
    app.click(app.item("username"));
    app.typeText("demo");
    app.type(Qt::Key_Return);
    app.typeText("wrong");
    app.type(Qt::Key_Return);
    EXPECT_EQ(app.focused(), "loginBtn");
    EXPECT_EQ(store_.string("Veltramoor_username"), "demo");
    EXPECT_EQ(store_.string("Veltramoor_password"), "wrong");
    EXPECT_EQ(app.item("passwordInput")->property("displayText").toString(),
              QString(5, QChar(0x25CF)))
        << "masked";
    EXPECT_EQ(logins(), 0U) << "return logs nobody in";
    app.click(app.item("loginBtn"));
    ASSERT_TRUE(waitFor([&] { return app.alert().isVisible(); }));
    EXPECT_EQ(app.alert().message(), QStringLiteral("Bad username or password."));
    app.type(Qt::Key_Return);
    EXPECT_FALSE(app.alert().isVisible());
    EXPECT_TRUE(waitFor([&] { return app.focused() == "loginBtn"; })) << app.focused();
    app.click(app.item("password"));
    app.root().loginViewController()->password()->setText("");
    app.typeText("demo");
    app.click(app.item("loginBtn"));
    ASSERT_TRUE(app.waitForItem("tabBar"));
    EXPECT_EQ(app.item("loginView"), nullptr);
    EXPECT_EQ(store_.string("Veltramoor_password"), "demo");
    EXPECT_EQ(app.root().tabBarController()->selectedIndex(), 0) << "99 is no tab";
    ASSERT_TRUE(idle(app));
    EXPECT_EQ(UserInfo::sharedInstance().username(), "demo");
    EXPECT_EQ(store_.number("Veltramoor_tab"), 99) << "nothing was chosen yet";
    app.click(app.item("tab3"));
    EXPECT_EQ(store_.number("Veltramoor_tab"), 3);
    ASSERT_TRUE(idle(app));
  }
  EXPECT_EQ(sessionCookies(), 1U);
  const std::size_t before = logins();
  logsOut(before);
  // The next start logs in again, by itself and into the first tab, and stays there.
  Application next(nullptr);
  ASSERT_TRUE(next.waitForItem("tabBar"));
  ASSERT_TRUE(idle(next));
  EXPECT_EQ(next.root().tabBarController()->selectedIndex(), 0);
  EXPECT_TRUE(next.root().showLogin());
  EXPECT_EQ(sessionCookies(), 1U);
}
// A tab remembered in any way that it can stand in the store.
TEST_F(ShellTest, AStoredTabThatIsNoneOpensTheFirst) {
  for (const std::int64_t stored : {std::int64_t{99}, std::int64_t{-1}, std::int64_t{0x7fffffff}}) {
    store_.setNumber("Veltramoor_tab", stored);
    Application app(nullptr);
    app.root().switchViews();
    EXPECT_EQ(app.root().tabBarController()->selectedIndex(), 0) << stored;
    ASSERT_TRUE(idle(app));
  }
  store_.setString("Veltramoor_tab", "3");
  Application app(nullptr);
  app.root().switchViews();
  EXPECT_EQ(app.root().tabBarController()->selectedIndex(), 0) << "text";
  ASSERT_TRUE(idle(app));
}

TEST_F(ShellTest, AStoredLogoutTabLogsOutOnce) {
  store_.setNumber("Veltramoor_tab", 10);
  store_.setString("Veltramoor_automaticLogin", "YES");
  {
    Application app(nullptr);
    ASSERT_TRUE(waitFor([&] {
      return app.root().tabBarController() != nullptr && !app.root().hasBackgroundWork();
    }));
    EXPECT_FALSE(app.root().showLogin());
    EXPECT_EQ(store_.number("Veltramoor_tab"), 0);
  }
  Application again(nullptr);
  ASSERT_TRUE(again.waitForItem("tabBar"));
  ASSERT_TRUE(idle(again));
  EXPECT_TRUE(again.root().showLogin());
}

TEST_F(ShellTest, AnotherSiteGetsTabsOfItsOwn) {
  const DemoSite other;
  Application app(nullptr);
  app.root().switchViews();
  ASSERT_TRUE(idle(app));
  const TabBarController* first = app.root().tabBarController();
  app.root().logout();
  app.root().switchViews();
  EXPECT_EQ(app.root().tabBarController(), first) << "the same site keeps them";
  ASSERT_TRUE(idle(app));
  app.root().logout();
  SiteConfiguration configuration = SiteConfiguration::current();
  configuration.siteHost = other.host();
  SiteConfiguration::setCurrent(configuration);
  EXPECT_TRUE(other.log().empty());
  app.root().switchViews();
  EXPECT_NE(app.root().tabBarController(), first);
  ASSERT_TRUE(idle(app));
  ASSERT_FALSE(other.log().empty());
  EXPECT_EQ(other.log().back().target, "/recent/0") << "no rows of the first site are left";
  EXPECT_EQ(app.root().tabBarController()->viewControllers()[9]->tabBarItem()->title(),
            QString::fromStdString(other.host()));
}

TEST_F(ShellTest, ASessionThatTheSiteForgotIsRenewedOrEnded) {
  Application app(nullptr);
  app.root().switchViews();
  ASSERT_TRUE(idle(app));
  LoginViewController& login = *app.root().loginViewController();
  login.username()->setText("demo");
  for (const bool valid : {true, false}) {
    const QString password = valid ? QStringLiteral("demo") : QStringLiteral("wrong");
    login.password()->setText(password);
    const std::size_t before = logins();
    app.root().sessionInvalidated();
    EXPECT_FALSE(app.root().sessionValidated());
    ASSERT_TRUE(waitFor([&] { return logins() == before + 1 && !login.hasBackgroundWork(); }));
    ASSERT_TRUE(waitFor(
        [&] { return app.root().showLogin() == valid && app.root().sessionValidated() == valid; }));
  }
  ASSERT_TRUE(app.waitForItem("loginView"));
}

TEST_F(ShellTest, WhoHasLoggedOutMeanwhileIsNotLoggedOutAgain) {
  Application app(nullptr);
  app.root().switchViews();
  ASSERT_TRUE(idle(app));
  const auto signingIn = sharedController(app.root().loginViewController());
  signingIn->username()->setText("demo");
  signingIn->password()->setText("wrong");
  const std::size_t before = logins();
  app.root().sessionInvalidated();
  app.root().logout();
  const LoginViewController* shown = app.root().loginViewController();
  ASSERT_TRUE(waitFor([&] { return logins() == before + 1 && !signingIn->hasBackgroundWork(); }));
  // The site's answer, and what that asks for.
  ASSERT_TRUE(test::deliver() && test::deliver());
  EXPECT_FALSE(app.root().sessionValidated());
  EXPECT_FALSE(app.root().showLogin()) << "the tabs stay away";
  EXPECT_EQ(app.root().loginViewController(), shown);
}

// A screen from the "More" list is named under its slot; the slot and the Escape key lead back.
TEST_F(ShellTest, TheMoreListCanBeReturnedTo) {
  Application app(nullptr);
  app.root().switchViews();
  ASSERT_TRUE(idle(app));
  app.window()->resize(320, 568);
  app.click(app.item("tab4"));
  ASSERT_TRUE(app.waitForItem("moreTable"));
  app.type(Qt::Key_Tab);
  for (int i = 0; i < 12 && app.item("moreTable")->property("currentIndex").toInt() < 0; ++i) {
    app.type(Qt::Key_Tab);
  }
  EXPECT_EQ(app.item("moreTable")->property("currentIndex").toInt(), 0) << "the focus is seen";
  const auto label = [&] { return app.item("tab4")->property("label").toString().toStdString(); };
  EXPECT_EQ(label(), "More");
  const auto open = [&](const char* row, const char* screen) {
    EXPECT_TRUE(app.waitForItem(row));
    app.click(app.item(row));
    EXPECT_TRUE(app.waitForItem(screen));
  };
  open("moreRow2", "historyList");
  EXPECT_EQ(label(), "D/l History, back to More");
  app.type(Qt::Key_Escape);
  open("moreRow0", "torrentTable");
  ASSERT_TRUE(idle(app));
  app.click(app.item("settingsBtn"));
  ASSERT_TRUE(app.waitForItem("displaySettings"));
  app.hold(Qt::Key_Escape);
  EXPECT_TRUE(app.waitForItem("torrentTable"));
  EXPECT_EQ(label(), "Uploads, back to More") << "a held key goes back once";
  app.type(Qt::Key_Escape);
  open("moreRow4", "serverSettings");
  EXPECT_FALSE(test::itemNamed(app.item("tab4"), "tabLabel")->property("truncated").toBool());
  app.click(app.item("tab4"));
  open("moreRow4", "serverSettings");
  app.click(app.item("serverAddress"));
  app.typeText("nas");
  app.type(Qt::Key_Escape);
  EXPECT_TRUE(app.waitForItem("moreTable"));
  EXPECT_EQ(label(), "More");
  EXPECT_EQ(ServerInfo::sharedInstance().address(), "nas") << "what was typed is kept";
}

TEST_F(ShellTest, NobodyIsAskedToDonateNowhereAndAGreyedFieldSaysWhatToDo) {
  Application app(nullptr);
  ASSERT_TRUE(app.waitForItem("loginView"));
  EXPECT_FALSE(app.item("donateView")->isVisible());
  for (const char* field : {"username", "password"}) {
    app.item("loginBtn")->forceActiveFocus();
    app.click(app.item(field));
    EXPECT_EQ(app.focused(), "anonymousLogin");
    EXPECT_TRUE(app.item("anonymousLoginPointedOut")->isVisible());
  }
  app.type(Qt::Key_Space);
  EXPECT_FALSE(app.item("anonymousLoginPointedOut")->isVisible());
  app.click(app.item("password"));
  EXPECT_EQ(app.focused(), "passwordInput");
}

TEST_F(ShellTest, ThePanelTurnsAndReturns) {
  SiteConfiguration configuration = SiteConfiguration::current();
  configuration.donationUrl = "http://donate.test/";
  SiteConfiguration::setCurrent(configuration);
  Application app(nullptr);
  ASSERT_TRUE(app.waitForItem("loginView"));
  int opened = 0;
  app.root().loginViewController()->donateView()->setOpenUrl([&opened](const QUrl&) {
    ++opened;
    return true;
  });
  app.item("donateView")->forceActiveFocus();
  app.hold(Qt::Key_Return);
  EXPECT_EQ(opened, 1);
  app.click(app.item("donateView"));
  EXPECT_EQ(opened, 2);
  app.click(app.item("anonymousLogin"));
  app.click(app.item("password"));
  app.typeText("secret");
  SiteChooser& site = *app.root().loginViewController()->site();
  app.click(app.item("changeSiteButton"));
  ASSERT_TRUE(app.waitForItem("siteField"));
  app.typeText("x");
  EXPECT_TRUE(site.field()->text().endsWith('x')) << "what is typed goes to the field on show";
  EXPECT_EQ(app.root().loginViewController()->password()->text(), QStringLiteral("secret"));
  app.type(Qt::Key_Escape);
  EXPECT_FALSE(site.isShown());
  site.open();
  ASSERT_TRUE(app.waitForItem("keepSiteButton"));
  app.click(app.item("keepSiteButton"));
  EXPECT_FALSE(site.isShown());
  app.click(app.item("infoButton"));
  EXPECT_TRUE(app.root().loginViewController()->isInfoViewShown());
  ASSERT_TRUE(waitFor([&] { return app.item("returnButton")->hasActiveFocus(); }));
  app.type(Qt::Key_Escape);
  EXPECT_FALSE(app.root().loginViewController()->isInfoViewShown());
}

}  // namespace
}  // namespace veltramoor
