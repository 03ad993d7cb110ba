// Signing in to, checking and leaving the demo site, and what goes over the wire then.
#include "site/SiteSession.h"

#include <gtest/gtest.h>

#include "demo/DemoSite.h"
#include "platform/CookieStorage.h"
#include "platform/RunLoop.h"
#include "platform/SiteConfiguration.h"
#include "platform/StateFile.h"
#include "site/FetchPageLoginCheck.h"
#include "site/FetchPageQuickLoginCheck.h"
#include "site/FetchPageSignIn.h"
#include "site/SessionSetup.h"
#include "site/UserInfo.h"
#include "support/RawServer.h"
#include "support/SharedCookies.h"

namespace veltramoor {
namespace {

using namespace std::chrono_literals;
using test::RawReply;
using test::RawServer;
using test::RecordedRequest;

constexpr char kBad[] = "Bad username or password.";
constexpr char kUnknown[] =
    "Unknown login error.  Verify you have cookies enabled.  Goto Settings->Safari->Accept "
    "Cookies.  Select 'From visited' or 'Always' and restart the app.";
constexpr char kConnection[] = "Connection error. Verify your data network.";
constexpr char kForm[] = R"(<form action="/login" name="loginform">)";

class SiteSessionTest : public testing::Test {
 protected:
  SiteSessionTest() {
    test::eraseSharedCookies();
    use(site_.host());
    UserInfo& info = UserInfo::sharedInstance();
    info.setUsername("before");
    info.setRatio("before");
    info.setIds("before");
  }
  ~SiteSessionTest() override {
    test::eraseSharedCookies();
    SiteConfiguration::setCurrent({});
  }

  static void use(const std::string& host) {
    SiteConfiguration configuration;
    configuration.siteHost = host;
    SiteConfiguration::setCurrent(configuration);
  }

  template <typename Operation, typename... Arguments>
  std::shared_ptr<HttpRequest> run(Arguments... arguments) {
    std::optional<std::shared_ptr<HttpRequest>> delivered;
    queue_.addOperation(std::make_shared<Operation>(
        arguments...,
        [&](std::shared_ptr<HttpRequest> request) { delivered = std::move(request); }));
    EXPECT_TRUE(loop_.runUntil([&] { return delivered.has_value(); }, 60s));
    EXPECT_TRUE(delivered && *delivered) << "a request is always delivered";
    return delivered && *delivered ? *delivered : std::make_shared<HttpRequest>(std::nullopt);
  }
  std::shared_ptr<HttpRequest> check() {
    return run<FetchPageLoginCheck>(Url::parse(settingsAddress()));
  }
  LoginOutcome signIn(const std::string& user, const std::string& password) {
    return judgeLogin(*run<FetchPageSignIn>(Url::parse(loginAddress()), user, password));
  }

  static void expectUser(const std::string& name, const std::string& status,
                         const std::optional<std::string>& id) {
    const UserInfo& info = UserInfo::sharedInstance();
    EXPECT_EQ(info.username(), name);
    EXPECT_EQ(info.ratio(), status);
    EXPECT_EQ(info.ids(), id);
  }
  std::vector<std::string> targets() const {
    std::vector<std::string> result;
    for (const DemoRequest& request : site_.log()) {
      result.push_back(request.method + " " + request.target);
    }
    return result;
  }

  RunLoop loop_;
  OperationQueue queue_{1};
  DemoSite site_;
};

TEST_F(SiteSessionTest, SignsInOnceAndIsKnownFromThenOn) {
  EXPECT_FALSE(sessionExists(*check()));
  expectUser("before", "before", "before");
  EXPECT_EQ(targets(), std::vector<std::string>{"GET /settings"});

  for (const LoginAnswer answer : {LoginAnswer::SettingsPage, LoginAnswer::RedirectToSettings}) {
    site_.setLoginAnswer(answer);
    site_.expireSessions();
    const LoginOutcome outcome = signIn("anna", "p&=%+é word");
    EXPECT_TRUE(outcome.loggedIn);
    EXPECT_EQ(outcome.message, "");
    expectUser("anna", "Trusted Member", "2002");
  }

  site_.clearLog();
  EXPECT_TRUE(sessionExists(*check()));
  EXPECT_EQ(targets(), (std::vector<std::string>{"GET /settings", "GET /language/en_EN",
                                                 "GET /",  // where the language page leads
                                                 "GET /settings"}));
}

TEST_F(SiteSessionTest, WordsEveryOutcome) {
  const auto expectFailure = [&](const LoginOutcome& outcome, const char* message) {
    EXPECT_FALSE(outcome.loggedIn) << message;
    EXPECT_EQ(outcome.message, message);
    expectUser("before", "before", "before");
  };
  expectFailure(signIn("demo", "wrong"), kBad);
  expectFailure(signIn("de&mo", "demo"), kBad);
  expectFailure(judgeLogin(*check()), kUnknown);
  for (const FaultKind fault : {FaultKind::Error500, FaultKind::Close, FaultKind::Reset,
                                FaultKind::RedirectLoop, FaultKind::Headers}) {
    site_.setFault("/login", {.kind = fault});
    expectFailure(signIn("demo", "demo"), kConnection);
  }
  use("127.0.0.1:1");
  expectFailure(signIn("demo", "demo"), kConnection);
  expectFailure(judgeLogin(*check()), kConnection);
  use("");
  expectFailure(signIn("demo", "demo"), kConnection);

  // What the account page looks like decides about the name, not about the session.
  test::eraseSharedCookies();  // a spoilt answer to the right password left its session
  use(site_.host());
  site_.setFault("/login", {.kind = FaultKind::Big});
  EXPECT_TRUE(signIn("demo", "demo").loggedIn) << "5 MB without the form";
  expectUser("Anonymous", "N/A", std::nullopt);
  site_.clearFaults();
  for (const FaultKind fault : {FaultKind::Error500, FaultKind::Big}) {
    site_.setFault("/settings", {.kind = fault});
    site_.setLoginAnswer(LoginAnswer::SettingsPage);
    EXPECT_TRUE(signIn("demo", "demo").loggedIn);
    expectUser("Anonymous", "N/A", std::nullopt);
  }
  site_.setFault("/settings", {.kind = FaultKind::OtherLayout});
  EXPECT_TRUE(sessionExists(*check()));
  expectUser("demo", "Member", "1001");
  site_.setFault("/settings", {.kind = FaultKind::Close});
  EXPECT_TRUE(signIn("anna", "p&=%+é word").loggedIn);
  expectUser("demo", "Member", "1001");
}

TEST_F(SiteSessionTest, AFormInAnotherEncodingIsStillTheForm) {
  site_.setFault("/", {.kind = FaultKind::InvalidUtf8});
  const auto page = check();
  EXPECT_EQ(page->result(), std::nullopt);
  EXPECT_FALSE(sessionExists(*page));
  EXPECT_EQ(signIn("demo", "wrong").message, kBad);
}

TEST_F(SiteSessionTest, ARequestThatThrowsIsAFailedOne) {
  struct Throwing final : HttpRequest {
    using HttpRequest::HttpRequest;
    void request() override { throw std::runtime_error("no memory"); }
  };
  Throwing request(std::nullopt);
  requestAndSetUpSession(request);
  EXPECT_EQ(judgeLogin(request).message, kConnection);
}

TEST_F(SiteSessionTest, AnonymousUseAsksNobody) {
  const auto request = run<FetchPageQuickLoginCheck>(std::optional<Url>());
  EXPECT_EQ(request->result(), "anonymous");
  EXPECT_FALSE(sessionExists(*request));
  EXPECT_TRUE(judgeLogin(*request).loggedIn);
  EXPECT_EQ(judgeLogin(*request).message, "");
  expectUser("Anonymous", "N/A", std::nullopt);
  EXPECT_TRUE(targets().empty());
}

TEST_F(SiteSessionTest, PostsTheFormAsTypedAndFollowsWithTheNewCookies) {
  const RawServer server([](const RecordedRequest& request) -> RawReply {
    if (request.method == "POST") {
      return RawServer::response(302, "", {"Location: /", "Set-Cookie: session=s1; Path=/"});
    }
    return RawServer::response(200, "<p>home</p>");
  });
  use(server.hostAndPort());
  EXPECT_TRUE(signIn("a&b=ü", "&=%+é/").loggedIn);

  const auto requests = server.requests();
  ASSERT_EQ(requests.size(), 4U);
  EXPECT_EQ(requests[0].target, "/login");
  EXPECT_EQ(requests[0].body,
            "username=a&b=ü&password=%26%3D%25%2B%C3%A9%2F&act=login&submit=Login");
  EXPECT_EQ(requests[0].header("Content-Type"), "application/x-www-form-urlencoded");
  EXPECT_EQ(requests[0].header("Content-Length"), std::to_string(requests[0].body.size() - 1));
  const char* const followers[] = {"/", "/language/en_EN", "/settings"};
  for (std::size_t i = 1; i < requests.size(); ++i) {
    EXPECT_EQ(requests[i].method + requests[i].target, std::string("GET") + followers[i - 1]);
    EXPECT_EQ(requests[i].header("Cookie"), "session=s1");
    EXPECT_EQ(requests[i].body, "");
  }
}

TEST_F(SiteSessionTest, KnowsTheFormAndItsAddress) {
  EXPECT_TRUE(isLoginHeader(std::string("<html>") + kForm));
  EXPECT_FALSE(isLoginHeader(R"(<form action="/login" id="f" name="loginform">)"));
  EXPECT_TRUE(isLoginUrl("http://" + site_.host() + "/login"));
  for (const std::string other : {"/login/", "/login?x", "/Login", "/settings"}) {
    EXPECT_FALSE(isLoginUrl("http://" + site_.host() + other)) << other;
  }
  EXPECT_TRUE(isInvalidUsername("Please check username and password. "));
  EXPECT_FALSE(isInvalidUsername("Please check username and password"));
}

TEST_F(SiteSessionTest, LeavingEndsTheSessionAndKeepsEverybodyElsesCookies) {
  ASSERT_TRUE(signIn("demo", "demo").loggedIn);
  CookieStorage& store = CookieStorage::sharedInstance();
  SiteConfiguration configuration;
  configuration.siteHost = site_.host();
  configuration.defaultSiteHost = "index.example:8080";
  configuration.captchaHost = "captcha.example:81";
  SiteConfiguration::setCurrent(configuration);
  const std::vector<std::string> kept = {"www.index.example", ".other.example", "captcha.example",
                                         "notindex.example",  "127.0.0.2",      "example.com"};
  for (const std::string gone : {".index.example", "Index.Example", ".captcha.example"}) {
    store.insert({.name = "session", .value = "1", .domain = gone});
  }
  for (const std::string& domain : kept) {
    store.insert({.name = "session", .value = "1", .domain = domain});
  }
  const auto domainsIn = [](const CookieStorage& cookies) {
    std::vector<std::string> domains;
    for (const Cookie& cookie : cookies.cookies()) {
      domains.push_back(cookie.domain);
    }
    return domains;
  };
  // From the disk as well, before anything else happens.
  store.saveIfChanged();
  const auto before = domainsIn(store);
  ASSERT_EQ(domainsIn(CookieStorage(defaultStateFile())), before);
  EXPECT_EQ(deleteSessionCookies(), before.size() - kept.size());
  EXPECT_EQ(domainsIn(CookieStorage(defaultStateFile())), kept);
  EXPECT_EQ(domainsIn(store), kept);
  EXPECT_FALSE(sessionExists(*check()));

  for (const std::string& domain : kept) {
    store.erase({domain});
  }
  store.erase({".index.example"});
  configuration.siteHost = "[::1]:8080";
  SiteConfiguration::setCurrent(configuration);
  store.insert({.name = "session", .value = "1", .domain = "::1"});
  EXPECT_EQ(deleteSessionCookies(), 1U);
}

}  // namespace
}  // namespace veltramoor
