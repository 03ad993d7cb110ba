// The other web page screens in the window: profile, forum, site; and what no page may do.
#include <filesystem>

#include "shell/pages/ForumWebViewController.h"
#include "shell/pages/ProfileWebViewController.h"
#include "shell/pages/SiteWebViewController.h"
#include "site/HttpRequest.h"
#include "site/UserInfo.h"
#include "support/WebTest.h"
#include "toolkit/WebCookies.h"

namespace veltramoor {
namespace {

using test::Application;
using test::PageServer;
using test::waitFor;

class WebScreensTest : public test::WebTest {
 protected:
  WebScreensTest() {
    configuration_.forumHost = forum_.host();
    SiteConfiguration::setCurrent(configuration_);
  }

  template <typename Screen>
  std::shared_ptr<Screen> screen() {
    auto made = std::make_shared<Screen>(std::nullopt, nullptr);
    watch(*made);
    return made;
  }

  PageServer forum_;
  PageServer elsewhere_;
};

TEST_F(WebScreensTest, TheProfileHasNoLinksAndLetsItsListGoOn) {
  pages_.set("/recent/0", "<table></table>");
  pages_.set("/settings",
             "<html><head></head><body><h2><span>Preferences</span></h2><p><a id=out "
             "href=\"/logout\">out</a></p><div id=\"foot\"></div></body></html>");
  Application app;
  ASSERT_TRUE(app.waitForRows(0));
  AllListViewController& list = app.list();
  UserInfo::sharedInstance().setUsername("anna");
  list.reloadHeaderView();
  app.click(app.item("usernameLbl"));
  EXPECT_FALSE(list.tableView()->allowsSelection());
  auto* profile =
      qobject_cast<WebViewController*>(list.navigationController()->topViewController());
  ASSERT_NE(profile, nullptr);
  EXPECT_FALSE(profile->leftBarItem()->button(0)->isEnabled());
  watch(*profile);
  ASSERT_TRUE(waitForLoads(1));
  EXPECT_EQ(valueOf(*profile, "document.getElementById('out').hasAttribute('href')"), "false");
  EXPECT_TRUE(list.tableView()->allowsSelection());
  EXPECT_FALSE(isOverlayShown());
  app.click(app.item("webBackButton"));
  ASSERT_TRUE(app.waitForItem("torrentTable"));

  // Left before its page has come: the list must not wait for ever.
  app.click(app.item("usernameLbl"));
  list.navigationController()->topViewController()->cancel();
  EXPECT_TRUE(list.tableView()->allowsSelection());
  EXPECT_FALSE(isOverlayShown());
  ASSERT_TRUE(waitFor([&] { return !list.hasBackgroundWork(); }));
}

TEST_F(WebScreensTest, WithoutAnEngineAScreenSaysSoAndEnds) {
  pages_.set("/", "<title>Home</title>");
  const auto site = screen<SiteWebViewController>();
  QObject::connect(site.get(), &WebViewController::webViewChanged,
                   [&] { site->myWebView()->reportUnusable(QStringLiteral("no engine here")); });
  Application app(std::make_shared<NavigationController>(site));
  ASSERT_TRUE(waitForLoads(1));
  EXPECT_FALSE(lastGood_);
  EXPECT_FALSE(isOverlayShown());
  EXPECT_TRUE(app.item("webError")->property("text").toString().contains("no engine here"));
}

TEST_F(WebScreensTest, TheForumLeadsNowhereElse) {
  forum_.set("/", "<title>Front</title><p><a id=in href=/topic>topic</a></p><p><a id=out href=\"" +
                      elsewhere_.url("/") + "\">out</a></p><img src=/picture>");
  forum_.set("/topic", "<title>Topic</title><p><a id=out target=_blank href=\"" +
                           elsewhere_.url("/") + "\">out</a></p>");
  const auto forum = screen<ForumWebViewController>();
  Application app(std::make_shared<NavigationController>(forum));
  EXPECT_TRUE(isOverlayShown());
  ASSERT_TRUE(waitForLoads(1));
  EXPECT_FALSE(isOverlayShown());
  EXPECT_FALSE(app.item("navigationBar")->isVisible());
  for (const char* path : {"/", "/picture"}) {
    EXPECT_EQ(forum_.last(path).header("User-Agent"), HttpRequest::kHandsetUserAgent) << path;
  }
  tap(app, *forum, "in");
  ASSERT_TRUE(waitForLoads(2));
  EXPECT_EQ(valueOf(*forum, "document.title"), "Topic");
  for (int taps = 1; taps <= 2; ++taps) {
    tap(app, *forum, "out");
    ASSERT_TRUE(waitForLoads(2 + taps));
    EXPECT_EQ(valueOf(*forum, "document.title"), "Front");
    EXPECT_EQ(forum_.hits("/"), 1U + static_cast<std::size_t>(taps));
  }
  EXPECT_EQ(elsewhere_.hits(), 0U);
}

TEST_F(WebScreensTest, AForumThatLeadsAwayByItselfIsNotFetchedForEver) {
  forum_.set("/",
             "<title>Front</title><script>addEventListener('load', () => setTimeout(() => "
             "location = '" +
                 elsewhere_.url("/") + "', 20))</script>");
  const auto forum = screen<ForumWebViewController>();
  Application app(std::make_shared<NavigationController>(forum));
  ASSERT_TRUE(waitForLoads(4));
  EXPECT_FALSE(lastGood_) << "the third page has been held back, too";
  // The next visit's fetch would stand behind any other.
  forum_.set("/", "<title>still</title>");
  WebCookies::sharedInstance().push();
  forum->viewWillDisappear();
  forum->appear();
  // Leaving may have ended a load of its own: the visit's page is known by its request.
  ASSERT_TRUE(waitFor([this] { return forum_.hits("/") > 3; }));
  EXPECT_TRUE(waitFor([this] { return !isOverlayShown(); }));
  EXPECT_EQ(forum_.hits("/"), 4U);
  EXPECT_EQ(elsewhere_.hits(), 0U);
}

TEST_F(WebScreensTest, TheSiteIsFetchedOnEveryVisitAndShowsThreeMegabytes) {
  std::string page = "<!DOCTYPE html><html><head><script>var order = 'a';</script></head><body>";
  for (int i = 0; page.size() < 3'000'000; ++i) {
    page += "<p class=row>100 % \"quoted\" \\ back é " + std::to_string(i) + "</p>\n";
  }
  page +=
      "<script>order += document.querySelectorAll('.row').length > 50000 ? 'b' : '-';"
      "addEventListener('load', () => order += 'd')</script><script src=/c.js></script>"
      "<p id=last>the end</p></body></html>";
  pages_.set("/", page);
  pages_.set("/c.js", "order += 'c';");
  const auto site = screen<SiteWebViewController>();
  EXPECT_EQ(site->tabBarItem()->title().toStdString(), pages_.host());
  Application app(std::make_shared<NavigationController>(site));
  ASSERT_TRUE(waitForLoads(1));
  EXPECT_EQ(valueOf(*site,
                    "order + document.compatMode + document.URL + "
                    "document.getElementById('last').innerText"),
            "abcdCSS1Compat" + pages_.url("/") + "the end");
  EXPECT_EQ(valueOf(*site, "document.querySelector('.row').innerText"),
            "100 % \"quoted\" \\ back é 0");
  site->viewWillDisappear();
  pages_.set("/", "<title>New</title><body style='width:1500px'>wide");
  site->viewWillAppear();
  ASSERT_TRUE(waitForLoads(2));
  EXPECT_EQ(valueOf(*site, "document.title"), "New");
  EXPECT_TRUE(waitFor([&] { return app.item("webView")->property("zoomFactor").toDouble() < 0.9; }))
      << "a wide page is drawn smaller";
  app.window()->resize(1600, 700);
  EXPECT_TRUE(waitFor([&] { return app.item("webView")->property("zoomFactor").toDouble() == 1; }));
  EXPECT_EQ(pages_.hits("/"), 2U);

  site->viewWillDisappear();
  configuration_.siteHost = "127.0.0.1:1";
  SiteConfiguration::setCurrent(configuration_);
  site->viewWillAppear();
  ASSERT_TRUE(waitForLoads(3));
  EXPECT_FALSE(isOverlayShown());
  EXPECT_EQ(app.item("webError")->property("text").toString(),
            QStringLiteral("http://127.0.0.1:1/ could not be loaded. 127.0.0.1 refuses connections "
                           "at port 1."));
}

TEST_F(WebScreensTest, APageReachesNothingOutsideItself) {
  pages_.set("/", R"page(<p><a id=file href="/x.bin" download>file</a></p>
    <p><a id=magnet href="magnet:?xt=a">magnet</a></p><p><a id=local href="file:///etc/passwd">f</a></p>
    <p><a id=window href="javascript:void(window.open('/popup'))">w</a></p>
    <p><b id=script onclick="seen.tapped = String(window.open('/popup'))">s</b></p>
    <iframe src="file:///etc/passwd"></iframe><iframe src="/frame"></iframe>
    <script>
      const seen = {};
      addEventListener('click', e => seen.last = e.target.id, true);
      seen.opened = String(window.open('/popup'));
      fetch('file:///etc/passwd').then(() => seen.file = 'read', () => seen.file = 'refused');
      Notification.requestPermission().then(p => seen.asked = p);
      navigator.mediaDevices.getUserMedia({audio: true}).then(() => seen.media = 'on',
                                                              () => seen.media = 'refused');
      navigator.clipboard.readText().then(() => seen.clip = 'read', () => seen.clip = 'refused');
      navigator.geolocation.getCurrentPosition(() => seen.place = 'found',
                                               () => seen.place = 'refused');
      alert('held up?');
    </script>)page");
  pages_.set("/frame", "<p>a frame of the site</p>");
  pages_.set("/x.bin",
             test::RawServer::response(200, "bytes",
                                       {"Content-Type: application/octet-stream",
                                        "Content-Disposition: attachment; filename=x.bin"}));
  const auto site = screen<SiteWebViewController>();
  Application app(std::make_shared<NavigationController>(site));
  ASSERT_TRUE(waitForLoads(1));
  EXPECT_TRUE(waitForValue(
      *site, "[seen.opened, seen.file, seen.clip, seen.media, seen.place, seen.asked].join()",
      "null,refused,refused,refused,refused,denied"));
  EXPECT_EQ(valueOf(*site, "Notification.permission"), "denied");
  EXPECT_EQ(pages_.hits("/frame"), 1U) << "frames are the page's own business";
  for (const char* id : {"file", "magnet", "local", "window", "script"}) {
    tap(app, *site, id);
    ASSERT_TRUE(waitForValue(*site, "seen.last", id));
    EXPECT_EQ(valueOf(*site, "document.URL"), pages_.url("/")) << id;
  }
  EXPECT_NE(valueOf(*site, "String(seen.tapped)"), "undefined") << "that tap arrived";
  EXPECT_EQ(pages_.hits("/popup"), 0U);
  EXPECT_EQ(QGuiApplication::topLevelWindows().size(), 1) << "no other window";
  const std::filesystem::path state = qgetenv("XDG_DATA_HOME").toStdString();
  for (const auto& entry : std::filesystem::recursive_directory_iterator(state)) {
    EXPECT_EQ(entry.path().string().find("x.bin"), std::string::npos) << entry.path();
    EXPECT_EQ(entry.path().string().find("QtWebEngine"), std::string::npos) << entry.path();
  }
}

TEST_F(WebScreensTest, CookiesAreSharedBothWaysAndALogoutReachesThePage) {
  CookieStorage& store = CookieStorage::sharedInstance();
  const auto held = [&](const std::string& name) -> std::string {
    for (const Cookie& cookie : store.cookies()) {
      if (cookie.name == name) {
        return cookie.domain + cookie.path + "=" + cookie.value + (cookie.httpOnly ? "!" : "");
      }
    }
    return {};
  };
  configuration_.siteHost = "www.pages.example:" + std::to_string(pages_.port());
  SiteConfiguration::setCurrent(configuration_);
  store.insert({.name = "session", .value = "1", .domain = ".pages.example", .httpOnly = true});
  store.insert({.name = "own", .value = "2", .domain = "www.pages.example"});
  store.insert({.name = "other", .value = "3", .domain = "pages.example"});
  pages_.set("/set", test::RawServer::response(
                         200, "ok",
                         {"Set-Cookie: session=9; Domain=pages.example; Path=/; HttpOnly",
                          "Set-Cookie: plain=4; Path=/", "Set-Cookie: own=; Max-Age=0; Path=/"}));
  const auto site = std::make_shared<WebViewController>(std::nullopt, nullptr);
  watch(*site);
  Application app(std::make_shared<NavigationController>(site));
  site->initializeWebView("<title>t</title><img src=/picture>");
  ASSERT_TRUE(waitForLoads(1));
  EXPECT_EQ(pages_.last("/picture").header("Cookie").value_or(""), "session=1; own=2")
      << "the host's own and its domain's, not another host's";

  valueOf(*site, "fetch('/set').then(() => document.cookie = 'mine=5; path=/'); 1");
  EXPECT_TRUE(waitFor([&] { return !held("mine").empty() && held("own").empty(); }));
  EXPECT_EQ(held("session"), ".pages.example/=9!");
  EXPECT_EQ(held("plain"), "www.pages.example/=4");
  EXPECT_EQ(held("mine"), "www.pages.example/=5");
  EXPECT_EQ(held("other"), "pages.example/=3");

  store.erase({".pages.example"});
  store.insert({.name = "plain", .value = "6", .domain = "www.pages.example"});
  WebCookies::sharedInstance().push();
  EXPECT_TRUE(waitForValue(*site, "document.cookie", "mine=5; plain=6"));
  site->initializeWebView("<title>t</title><img src=/again>");
  ASSERT_TRUE(waitForLoads(2));
  EXPECT_EQ(pages_.last("/again").header("Cookie").value_or(""), "mine=5; plain=6");
  EXPECT_EQ(held("session"), "") << "nothing comes back";
}

}  // namespace
}  // namespace veltramoor
