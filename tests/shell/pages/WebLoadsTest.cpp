// Loads that end in other ways than with a page, what opens a page at all, and what a logout
// leaves.
#include <QPointer>

#include "remote/ServerInfo.h"
#include "remote/screens/ClientWebViewController.h"
#include "shell/pages/ForumWebViewController.h"
#include "shell/pages/SiteWebViewController.h"
#include "support/TransmissionDaemon.h"
#include "support/WebTest.h"
#include "toolkit/WebCookies.h"

namespace veltramoor {
namespace {

using test::Application;
using test::PageServer;
using test::RawServer;
using test::waitFor;

class WebLoadsTest : public test::WebTest {
 protected:
  WebLoadsTest() {
    configuration_.forumHost = pages_.host();
    SiteConfiguration::setCurrent(configuration_);
    ServerInfo& info = ServerInfo::sharedInstance();
    info.setClient("Vuze");
    info.setAddress("127.0.0.1");
    info.setPort(std::to_string(pages_.port()));
    pages_.set("/204", RawServer::response(204));
    pages_.set("/x.bin", RawServer::response(200, "bytes",
                                             {"Content-Type: application/octet-stream",
                                              "Content-Disposition: attachment"}));
  }

  /// The tabs that show pages; all at the same server.
  static std::vector<std::shared_ptr<WebViewController>> tabs() {
    return {std::make_shared<SiteWebViewController>(std::nullopt, nullptr),
            std::make_shared<ForumWebViewController>(std::nullopt, nullptr),
            std::make_shared<ClientWebViewController>(std::nullopt,
                                                      ClientWebViewController::OpenedFrom::TabBar)};
  }
  /// Leaves the tab and comes back.
  static void visitAgain(WebViewController& tab) {
    tab.viewWillDisappear();
    tab.appear();
    tab.viewDidAppear();
  }

  PageServer elsewhere_;
};

TEST_F(WebLoadsTest, ALoadThatStopsByItselfTakesTheOverlayWithIt) {
  for (const auto& tab : tabs()) {
    watch(*tab);
    pages_.set("/", "<title>first</title>");
    Application app(std::make_shared<NavigationController>(tab));
    ASSERT_TRUE(waitForLoads(1));
    std::size_t hits = pages_.hits("/");
    int loads = 1;
    // Counted over all visits: what one of them causes later is missed by no later one.
    const auto visit = [&](const std::string& page) {
      pages_.set("/", page);
      WebCookies::sharedInstance().push();  // or the forum would stay as it is
      visitAgain(*tab);
      EXPECT_TRUE(isOverlayShown());
      EXPECT_TRUE(waitForLoads(++loads));
      EXPECT_FALSE(isOverlayShown());
      EXPECT_EQ(loads_, loads);
      EXPECT_EQ(pages_.hits("/"), ++hits) << "the visit before has fetched nothing again";
    };
    for (const char* script :
         {"stop()", "location = '/204'", "location = '/x.bin'", "location = 'magnet:?xt=urn:a'"}) {
      SCOPED_TRACE(tab->tabBarItem()->title().toStdString() + ": " + script);
      visit("<p>text</p><script>" + std::string(script) + "</script><p>more</p>");
      EXPECT_FALSE(lastGood_);
    }
    visit("<title>last</title>");
    EXPECT_TRUE(lastGood_);
  }
}

TEST_F(WebLoadsTest, AForumPageThatLeadsAwayWhileItLoadsStaysInTheEnd) {
  pages_.set("/", "<script>location = '" + elsewhere_.url() + "'</script><p>more</p>");
  const auto forum = std::make_shared<ForumWebViewController>(std::nullopt, nullptr);
  watch(*forum);
  Application app(std::make_shared<NavigationController>(forum));
  ASSERT_TRUE(waitForLoads(1));
  EXPECT_FALSE(lastGood_);
  EXPECT_FALSE(isOverlayShown());
  EXPECT_EQ(pages_.hits("/"), 3U);
  // The next visit's fetch would stand behind any that the page has still caused.
  pages_.set("/", "<title>still</title>");
  WebCookies::sharedInstance().push();
  visitAgain(*forum);
  ASSERT_TRUE(waitForLoads(2));
  EXPECT_TRUE(lastGood_);
  EXPECT_FALSE(isOverlayShown());
  EXPECT_EQ(pages_.hits("/"), 4U);
  EXPECT_EQ(elsewhere_.hits(), 0U);
}

// The engine speaks of a stopped load when the next one is under way already.
TEST_F(WebLoadsTest, ALoadThatMakesWayDoesNotEndTheOneAfterIt) {
  const RawServer slow([](const test::RecordedRequest&) { return test::RawReply::hang(); });
  configuration_.movieDatabaseHost = slow.hostAndPort();
  SiteConfiguration::setCurrent(configuration_);
  const auto screen = std::make_shared<WebViewController>(std::nullopt, nullptr);
  Application app(std::make_shared<NavigationController>(screen));
  screen->initializeWebView("<title>t</title>");
  watch(*screen);
  ASSERT_TRUE(waitForLoads(1));
  int loads = 1;
  // However far the one before has come: asked for, begun, or at the server.
  for (const int turns : {0, 1, 2, 5, 20, -1}) {
    SCOPED_TRACE(turns);
    for (const char* path : {"/early", "/late"}) {
      const std::string target = path + std::to_string(turns);
      screen->loadRequest(QUrl(QString::fromStdString(slow.url(target))));
      for (int turn = 0; turn < turns; ++turn) {
        QCoreApplication::processEvents();
      }
      EXPECT_TRUE((turns >= 0 && target.starts_with("/early")) ||
                  waitFor([&] { return slow.hits(target) == 1; }));
    }
    EXPECT_TRUE(isOverlayShown());
    EXPECT_TRUE(screen->myWebView()->isLoading());
    screen->myWebView()->stop();
    EXPECT_EQ(loads_, loads += 2) << "each has ended, once";
  }
  // A page that is there ends its load as well.
  pages_.set("/x", "<title>x</title>");
  screen->loadRequest(QUrl(QString::fromStdString(slow.url("/last"))));
  screen->loadRequest(QUrl(QString::fromStdString(pages_.url("/x"))));
  EXPECT_TRUE(waitForValue(*screen, "document.title", "x"));
  EXPECT_TRUE(waitFor([] { return !isOverlayShown(); }));
  EXPECT_EQ(loads_, loads + 2);
  EXPECT_TRUE(lastGood_);
}

// A tap opens the link that it meets, and nothing that a script makes of it.
TEST_F(WebLoadsTest, OnlyTappedLinksOpenWhatAsksForAWindow) {
  pages_.set("/popup", "<title>Popup</title>");
  pages_.set("/frame",
             "<a id=in target=_blank href=/popup style='font-size:80px' "
             "onclick=\"parent.tapped = 'frame'\">frame</a>");
  // What a tap has met is written down before anything that it asks for can be done.
  const std::string body =
      "<script>var tapped = ''; addEventListener('click', e => { if (e.isTrusted) tapped = "
      "e.target.id }, true)</script><p><b id=plain onclick=\"window.open('/popup')\">open</b></p>"
      "<p><a id=link href='#x' onclick=\"window.open('/popup')\">open too</a></p>"
      "<p><b id=click onclick=\"document.getElementById('hidden').click()\">click</b></p>"
      "<p><b id=focus onclick=\"var h = document.getElementById('hidden'); h.focus(); "
      "window.open(h.href)\">focus</b></p>"
      "<p><b id=down onpointerdown=\"window.open('/popup')\">down</b></p>"
      "<p><b id=form onclick=\"document.forms[0].submit()\">form</b></p>"
      "<form target=_blank action=/popup></form><iframe id=frame src=/frame></iframe>"
      "<p><a id=hidden target=_blank href=/popup>hidden</a></p>"
      "<p><a id=blank target=_blank href='/page?a=%20b#%C3%A9'><i id=inner>a page</i></a></p>"
      "<p><a id=key target=_blank href=/key>by key</a></p>";
  for (const char* path : {"/", "/page?a=%20b", "/key"}) {
    pages_.set(path, "<title>" + std::string(path) + "</title>" + body);
  }
  const auto site = std::make_shared<SiteWebViewController>(std::nullopt, nullptr);
  watch(*site);
  Application app(std::make_shared<NavigationController>(site));
  ASSERT_TRUE(waitForLoads(1));
  for (const char* title : {"/", "/page?a=%20b"}) {
    ASSERT_TRUE(waitForValue(*site, "document.title", title));
    for (const char* id : {"plain", "link", "click", "focus", "down", "form", "frame"}) {
      ASSERT_TRUE(tapUntilHeard(app, *site, id)) << id;
      EXPECT_EQ(valueOf(*site, "document.title"), title) << id;
    }
    tap(app, *site, "inner");
    ASSERT_TRUE(waitForValue(*site, "document.title", "/page?a=%20b"));
    ASSERT_TRUE(waitFor([&] { return !site->myWebView()->isLoading(); }));
  }
  // By a finger, and by a key.
  QPointingDevice* finger = QTest::createTouchDevice();
  const auto touch = [&](const std::string& id) {
    const QString place = QString::fromStdString(
        valueOf(*site, "scrollTo(0, 0); var r = document.getElementById('" + id +
                           "').getBoundingClientRect(); (r.left + 5) + ',' + (r.top + 5)"));
    const QPoint at = app.item("webView")
                          ->mapToScene({place.section(QLatin1Char(','), 0, 0).toDouble(),
                                        place.section(QLatin1Char(','), 1, 1).toDouble()})
                          .toPoint();
    QTest::touchEvent(app.window(), finger).press(0, at);
    QTest::touchEvent(app.window(), finger).release(0, at);
  };
  touch("plain");
  ASSERT_TRUE(waitForValue(*site, "tapped", "plain"));
  touch("key");
  ASSERT_TRUE(waitForValue(*site, "document.title", "/key"));
  valueOf(*site, "document.getElementById('blank').focus()");
  app.item("webView")->forceActiveFocus();
  app.type(Qt::Key_Return);
  ASSERT_TRUE(waitForValue(*site, "document.title", "/page?a=%20b"));
  EXPECT_EQ(pages_.hits("/popup"), 0U) << "what came after has been fetched";
  EXPECT_EQ(QGuiApplication::topLevelWindows().size(), 1);
}

TEST_F(WebLoadsTest, AForumThatFailedIsAskedForAgainAtTheNextVisit) {
  const std::string host = configuration_.forumHost;
  configuration_.forumHost = "127.0.0.1:" + std::to_string(test::freePort());
  SiteConfiguration::setCurrent(configuration_);
  const auto forum = std::make_shared<ForumWebViewController>(std::nullopt, nullptr);
  watch(*forum);
  Application app(std::make_shared<NavigationController>(forum));
  ASSERT_TRUE(waitForLoads(1));
  EXPECT_FALSE(lastGood_);
  configuration_.forumHost = host;
  SiteConfiguration::setCurrent(configuration_);
  pages_.set("/", "<title>there again</title>");
  visitAgain(*forum);
  ASSERT_TRUE(waitForLoads(2));
  EXPECT_EQ(valueOf(*forum, "document.title"), "there again");
  visitAgain(*forum);
  EXPECT_FALSE(forum->hasBackgroundWork()) << "a page that is there stays";
}

TEST_F(WebLoadsTest, ALogoutDropsTheTabsPagesAndTheNextVisitFetchesThem) {
  for (const auto& tab : tabs()) {
    SCOPED_TRACE(tab->tabBarItem()->title().toStdString());
    pages_.set("/", "<title>of anna</title>");
    WebCookies::sharedInstance().push();
    EXPECT_EQ(tab->myWebView(), nullptr) << "not even loaded";
    watch(*tab);
    Application app(std::make_shared<NavigationController>(tab));
    ASSERT_TRUE(waitForLoads(1));
    std::size_t hits = pages_.hits("/");
    const QPointer<WebPage> old = tab->myWebView();
    tab->viewWillDisappear();
    WebCookies::sharedInstance().push();
    EXPECT_EQ(tab->myWebView(), nullptr);
    if (old != nullptr) {
      // Its view is there for a moment longer, and what it says is nobody's business any more.
      EXPECT_FALSE(old->shouldStartLoad(QUrl("http://elsewhere.test/"), 0, true));
      old->reportStarted();
      old->reportFinished();
      EXPECT_FALSE(isOverlayShown());
    }
    EXPECT_EQ(tab->result(), std::nullopt);
    EXPECT_TRUE(waitFor([&] { return app.item("webView") == nullptr; }));
    pages_.set("/", "<title>of berta</title>");
    tab->appear();
    tab->viewDidAppear();
    ASSERT_TRUE(waitForLoads(2));
    EXPECT_EQ(valueOf(*tab, "document.title"), "of berta");
    EXPECT_EQ(pages_.hits("/"), ++hits);

    // A page that was asked for before the logout comes after it.
    pages_.set("/", "<title>late</title>");
    WebCookies::sharedInstance().push();
    visitAgain(*tab);
    tab->viewWillDisappear();
    WebCookies::sharedInstance().push();
    ASSERT_TRUE(waitFor([&] { return !tab->hasBackgroundWork(); }));
    ASSERT_TRUE(test::deliver());
    EXPECT_EQ(pages_.hits("/"), ++hits);
    EXPECT_EQ(tab->myWebView(), nullptr);
    EXPECT_FALSE(isOverlayShown());
    tab->appear();
    tab->viewDidAppear();
    ASSERT_TRUE(waitForLoads(3));
    EXPECT_EQ(pages_.hits("/"), ++hits);
  }
}

}  // namespace
}  // namespace veltramoor
