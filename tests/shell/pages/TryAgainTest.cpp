// Pages that did not come: what is said of them, and the way to ask for them again.
#include <QAccessible>

#include "remote/ServerInfo.h"
#include "remote/screens/ClientWebViewController.h"
#include "shell/pages/ForumWebViewController.h"
#include "shell/pages/ProfileWebViewController.h"
#include "shell/pages/SiteWebViewController.h"
#include "shell/pages/TorrentWebViewController.h"
#include "support/ListingPage.h"
#include "support/WebTest.h"

namespace veltramoor {
namespace {

using test::Application;
using test::RawServer;
using test::waitFor;

class TryAgainTest : public test::WebTest {
 protected:
  TryAgainTest() {
    configuration_.forumHost = pages_.host();
    configuration_.movieDatabaseHost = movies_.host();
    SiteConfiguration::setCurrent(configuration_);
    ServerInfo& info = ServerInfo::sharedInstance();
    info.setClient("Vuze");
    info.setAddress("127.0.0.1");
    info.setPort(std::to_string(pages_.port()));
  }

  /// What is at `path` is never an answer, for whoever asks.
  void breakPage(const std::string& path) {
    pages_.set(path, RawServer::response(302, "", {"Location: " + path}));
  }
  [[nodiscard]] static std::string error(const Application& app) {
    const QQuickItem* text = app.item("webError");
    return text->isVisible() ? text->property("text").toString().toStdString() : "";
  }
  [[nodiscard]] std::string noPage(const std::string& path) const {
    return pages_.url(path) +
           " could not be loaded. 127.0.0.1 leads from one address to the next without end.";
  }
  static void closeAlerts(Application& app) {
    while (app.alert().isVisible()) {
      app.alert().dismissWithButtonIndex(0);
    }
  }

  test::PageServer movies_;
};

TEST_F(TryAgainTest, AScreenWhosePageDidNotComeAsksForItAgain) {
  using Screen = std::shared_ptr<WebViewController>;
  struct Case {
    const char* path;
    Screen (*make)();
  };
  for (const Case& one :
       {Case{"/settings",
             []() -> Screen {
               return std::make_shared<ProfileWebViewController>(
                   SiteConfiguration::current().siteUrl("/settings"), nullptr);
             }},
        Case{"/",
             []() -> Screen {
               return std::make_shared<ForumWebViewController>(std::nullopt, nullptr);
             }},
        Case{"/",
             []() -> Screen {
               return std::make_shared<SiteWebViewController>(std::nullopt, nullptr);
             }},
        Case{"/",
             []() -> Screen {
               return std::make_shared<ClientWebViewController>(
                   std::nullopt, ClientWebViewController::OpenedFrom::TabBar);
             }},
        Case{"/", []() -> Screen {
               return std::make_shared<ClientWebViewController>(
                   std::nullopt, ClientWebViewController::OpenedFrom::RemoteSettings);
             }}}) {
    const Screen screen = one.make();
    SCOPED_TRACE(screen->metaObject()->className());
    watch(*screen);
    breakPage(one.path);
    Application app(std::make_shared<NavigationController>(screen));
    ASSERT_TRUE(waitForLoads(1));
    closeAlerts(app);
    EXPECT_EQ(error(app), noPage(one.path));
    QQuickItem* again = app.item("webTryAgain");
    EXPECT_GE(again->height(), 44);
    QAccessibleInterface* button = QAccessible::queryAccessibleInterface(again);
    EXPECT_EQ(button->text(QAccessible::Name), QStringLiteral("Try again"));
    EXPECT_TRUE(QRectF(QPointF(), app.window()->size())
                    .contains(again->mapRectToScene(again->boundingRect())));
    bool waited = false;
    QObject::connect(&LoadingIndicator::current(), &LoadingIndicator::changed, app.window(),
                     [&waited] { waited = waited || isOverlayShown(); });
    app.click(again);
    ASSERT_TRUE(waitForLoads(2));
    EXPECT_TRUE(waited);
    closeAlerts(app);
    EXPECT_FALSE(isOverlayShown());
    EXPECT_EQ(error(app), noPage(one.path));

    pages_.set(one.path,
               "<html><head></head><body><h2><span>Preferences</span></h2><p>there</p>"
               "<div id=\"foot\"></div></body></html>");
    const std::size_t hits = pages_.hits(one.path);
    app.type(Qt::Key_Return);
    ASSERT_TRUE(waitForLoads(3));
    closeAlerts(app);
    EXPECT_TRUE(lastGood_);
    EXPECT_EQ(pages_.hits(one.path), hits + 1);
    EXPECT_EQ(error(app), "");
    EXPECT_FALSE(again->isVisible());
    EXPECT_EQ(valueOf(*screen, "document.querySelector('p').innerText"), "there");
    EXPECT_FALSE(isOverlayShown());
  }
}

TEST_F(TryAgainTest, ADetailsPageIsFetchedAnewAndALinkIsFollowedAgain) {
  const std::string path = "/torrent/1/a";
  pages_.set("/recent/0", test::listingPage({"Name 0"}, "magnet:?xt=a"));
  breakPage(path);
  Application app;
  ASSERT_TRUE(app.waitForRows(1));
  NavigationController* navigation = app.list().navigationController();
  app.click(app.row(0), {60, 15});
  auto* screen = qobject_cast<TorrentWebViewController*>(navigation->topViewController());
  ASSERT_NE(screen, nullptr);
  watch(*screen);
  ASSERT_TRUE(app.waitForItem("webTryAgain"));
  EXPECT_EQ(error(app), noPage(path));
  app.click(app.item("webTryAgain"));
  EXPECT_EQ(error(app), noPage(path)) << "it has waited for it";
  EXPECT_FALSE(isOverlayShown());
  EXPECT_EQ(app.item("webImdbButton"), nullptr);

  pages_.set(path,
             "<!DOCTYPE html><html><head><title>Details</title></head><body>"
             "<div id=\"detailsframe\"><p><a id=next href=/next>next</a></p><a href=\"" +
                 movies_.url("/title/tt1/") +
                 "\">movie</a><div id=\"comments\"></div></div></body></html>");
  breakPage("/next");
  const int loads = loads_;
  app.click(app.item("webTryAgain"));
  ASSERT_TRUE(waitForLoads(loads + 1));
  EXPECT_EQ(valueOf(*screen, "document.title"), "Details");
  EXPECT_EQ(error(app), "");
  EXPECT_FALSE(isOverlayShown());
  EXPECT_FALSE(screen->backButton()->isEnabled());
  EXPECT_TRUE(app.waitForItem("webImdbButton"));
  const std::size_t hits = pages_.hits(path);

  for (int failures = 2; failures <= 3; ++failures) {
    failures == 2 ? tap(app, *screen, "next") : app.click(app.item("webTryAgain"));
    ASSERT_TRUE(waitForLoads(loads + failures));
    EXPECT_EQ(error(app), pages_.url("/next") + " could not be loaded: error 310.");
  }
  pages_.set("/next", "<title>Next</title>");
  app.click(app.item("webTryAgain"));
  ASSERT_TRUE(waitForLoads(loads + 4));
  EXPECT_EQ(valueOf(*screen, "document.title"), "Next");
  EXPECT_TRUE(screen->backButton()->isEnabled());
  EXPECT_EQ(pages_.hits(path), hits);
}

}  // namespace
}  // namespace veltramoor
