// What the web engine holds after a change of the shared cookies, as a page's server and scripts
// see it.
#include "toolkit/WebCookies.h"

#include "support/WebTest.h"

namespace veltramoor {
namespace {

using test::Application;
using test::waitFor;

// Names that end so lead to this machine by themselves and count as secure, others only lead here.
constexpr char kSecureHost[] = "www.pages.localhost";
constexpr char kPlainHost[] = "www.pages.example";

class WebCookiesTest : public test::WebTest {
 protected:
  ~WebCookiesTest() override { store({}); }

  static void store(const std::vector<Cookie>& cookies) {
    CookieStorage& jar = CookieStorage::sharedInstance();
    for (const Cookie& cookie : jar.cookies()) {
      jar.erase({cookie.domain}, cookie.name);
    }
    for (const Cookie& cookie : cookies) {
      jar.insert(cookie);
    }
  }
  static std::string text(const std::vector<Cookie>& cookies) {
    std::string all;
    for (const Cookie& cookie : cookies) {
      all += cookie.domain + cookie.path + " " + cookie.name + "=" + cookie.value +
             (cookie.secure ? " secure" : "") + (cookie.httpOnly ? " hidden\n" : "\n");
    }
    return all;
  }
  /// What the server gets with a request, and in brackets what a script can read.
  std::string seen(const WebViewController& screen) {
    const std::string path = "/deep/" + std::to_string(++requests_);
    std::string scripts = valueOf(screen, "fetch('" + path + "'); document.cookie");
    EXPECT_TRUE(waitFor([&] { return pages_.hits(path) == 1; }));
    return pages_.last(path).header("Cookie").value_or("") + " [" + scripts + "]";
  }
  void expectSeen(const WebViewController& screen, const std::string& expected) {
    std::string last;
    EXPECT_TRUE(waitFor([&] { return (last = seen(screen)) == expected; }))
        << last << " instead of " << expected;
  }

  int requests_ = 0;
};

TEST_F(WebCookiesTest, EveryChangeOfTheStoreReachesTheEngineAndNoOtherCookie) {
  struct Case {
    const char* what;
    const char* host;
    std::vector<Cookie> before;
    std::string seenBefore;
    std::vector<Cookie> after;
    std::string seenAfter;
  };
  const Cookie own{.name = "id", .value = "own", .domain = kSecureHost};
  const Cookie wide{.name = "id", .value = "wide", .domain = ".pages.localhost"};
  const Cookie deep{.name = "id", .value = "deep", .domain = kSecureHost, .path = "/deep"};
  const Cookie secure{.name = "s", .value = "1", .domain = kSecureHost, .secure = true};
  const Cookie wideSecure{.name = "w", .value = "2", .domain = ".pages.localhost", .secure = true};
  const Cookie hidden{.name = "h", .value = "3", .domain = kSecureHost, .httpOnly = true};
  const Cookie shown{.name = "h", .value = "3", .domain = kSecureHost};
  const Cookie never{.name = "n", .value = "4", .domain = kPlainHost, .secure = true};
  const Cookie always{.name = "n", .value = "4", .domain = kPlainHost};
  for (const Case& c : {
           Case{"secure ones go",
                kSecureHost,
                {secure, wideSecure},
                "s=1; w=2 [s=1; w=2]",
                {},
                " []"},
           Case{"the domain's stays",
                kSecureHost,
                {own, wide},
                "id=own; id=wide [id=own; id=wide]",
                {wide},
                "id=wide [id=wide]"},
           Case{"the host's stays",
                kSecureHost,
                {own, wide},
                "id=own; id=wide [id=own; id=wide]",
                {own},
                "id=own [id=own]"},
           Case{"the one of the whole host stays",
                kSecureHost,
                {own, deep},
                "id=deep; id=own [id=own]",
                {own},
                "id=own [id=own]"},
           Case{"the one of a folder stays",
                kSecureHost,
                {own, deep},
                "id=deep; id=own [id=own]",
                {deep},
                "id=deep []"},
           Case{"a script may read it now", kSecureHost, {hidden}, "h=3 []", {shown}, "h=3 [h=3]"},
           Case{"no script may read it now", kSecureHost, {shown}, "h=3 [h=3]", {hidden}, "h=3 []"},
           Case{"no longer for secure pages alone",
                kPlainHost,
                {never},
                " []",
                {always},
                "n=4 [n=4]"},
           Case{"for secure pages alone now", kPlainHost, {always}, "n=4 [n=4]", {never}, " []"},
       }) {
    SCOPED_TRACE(c.what);
    configuration_.siteHost = c.host + (":" + std::to_string(pages_.port()));
    SiteConfiguration::setCurrent(configuration_);
    store(c.before);
    const auto screen = std::make_shared<WebViewController>(std::nullopt, nullptr);
    watch(*screen);
    Application app(std::make_shared<NavigationController>(screen));
    screen->initializeWebView("<title>t</title>");
    ASSERT_TRUE(waitForLoads(1));
    expectSeen(*screen, c.seenBefore);
    store(c.after);
    WebCookies::sharedInstance().push();
    expectSeen(*screen, c.seenAfter);
    EXPECT_EQ(text(CookieStorage::sharedInstance().cookies()), text(c.after)) << "the store";

    // A session that ends before the engine has said a word about it.
    store(c.before);
    WebCookies::sharedInstance().push();
    store({});
    WebCookies::sharedInstance().push();
    expectSeen(*screen, " []");
    EXPECT_EQ(text(CookieStorage::sharedInstance().cookies()), "");
    screen->initializeWebView("<title>t</title>");
    ASSERT_TRUE(waitForLoads(2));
    EXPECT_EQ(seen(*screen), " []") << "after the next load too";
  }
}

}  // namespace
}  // namespace veltramoor
