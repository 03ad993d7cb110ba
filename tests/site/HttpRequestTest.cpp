// The bytes of every request, as a server gets them.
#include "site/HttpRequest.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "Util/MBBase64.h"
#include "platform/CookieStorage.h"
#include "platform/SiteConfiguration.h"
#include "remote/Utorrent.h"
#include "site/FetchPagePost.h"
#include "site/HttpRequestRegEx.h"
#include "support/RawServer.h"
#include "support/SharedCookies.h"

namespace veltramoor {
namespace {

using test::RawServer;
using test::RecordedRequest;

constexpr char kDesktop[] =
    "User-Agent: Mozilla/4.0 (compatible; MSIE 7.0; Windows NT 6.1; Trident/4.0; SLCC2; "
    ".NET CLR 2.0.50727; .NET CLR 3.5.30729; .NET CLR";
constexpr char kHandset[] =
    "User-Agent: Mozilla/5.0 (iPhone; U; CPU like Mac OS X; en) AppleWebKit/420+ (KHTML, like "
    "Gecko) Version/3.0 Mobile/1C25 Safari/419.3";

class HttpRequestTest : public testing::Test {
 protected:
  HttpRequestTest() { test::eraseSharedCookies(); }
  ~HttpRequestTest() override {
    test::eraseSharedCookies();
    SiteConfiguration::setCurrent({});
  }

  HttpRequest requestTo(const std::string& path) {
    return HttpRequest(Url::parse(server_.url(path)));
  }

  // What the request's own code adds, without what the transport does.
  std::vector<std::string> linesOf(HttpRequest& request) {
    request.request();
    EXPECT_TRUE(request.isResponseValid());
    std::vector<std::string> lines = server_.requests().back().headerLines();
    std::erase_if(lines, [](const std::string& line) {
      return line.starts_with("Host: ") || line.starts_with("Accept-Encoding: ") ||
             line == "Accept: */*" || line.starts_with("Cookie: ");
    });
    return lines;
  }
  std::string bodySent() { return server_.requests().back().body; }

  RawServer server_{[](const RecordedRequest&) { return RawServer::response(200, "fine"); }};
};

using Lines = std::vector<std::string>;

TEST_F(HttpRequestTest, SendsEachKindOfRequestByteForByte) {
  HttpRequest get = requestTo("/recent/0?a=%7E~&b=c//d");
  EXPECT_EQ(linesOf(get), (Lines{"Content-Type: text/html", kDesktop}));
  EXPECT_EQ(server_.requests().back().head.substr(0, 39),
            "GET /recent/0?a=%7E~&b=c//d HTTP/1.1\r\nH");
  EXPECT_EQ(bodySent(), "");
  EXPECT_EQ(get.result(), "fine");

  HttpRequest handset = requestTo("/");
  handset.setOverwriteUserAgent(false);
  handset.setUsername("");
  EXPECT_EQ(linesOf(handset), (Lines{"Content-Type: text/html", kHandset}));

  HttpRequest form = requestTo("/login");
  form.setType("POST");
  form.setPostData("username=a&password=b%26");
  EXPECT_EQ(linesOf(form), (Lines{"Content-Type: application/x-www-form-urlencoded",
                                  "Content-Length: 24", kDesktop}));
  EXPECT_EQ(bodySent(), "username=a&password=b%26");

  HttpRequest body = requestTo("/rpc");
  body.setType("POST");
  body.setBody("{}");
  body.setUsername("u");
  body.setPassword("pä:s");
  body.setExtraHeaders({{"X-Twice", "1"}, {"X-Twice", "2"}, {"Content-Length", "2"}});
  EXPECT_EQ(linesOf(body), (Lines{"X-Twice: 1", "X-Twice: 2", "Content-Length: 2",
                                  "Authorization: Basic " + base64Encoding("u:pä:s"), kDesktop}));

  HttpRequest upload = requestTo("/gui/");
  upload.setType("POST");
  auto client = std::make_shared<Utorrent>();
  client->filename = "a.torrent";
  client->file = std::string("d\0e", 3);
  upload.setClient(client);
  EXPECT_EQ(linesOf(upload),
            (Lines{"Content-Type: multipart/form-data; boundary=" + std::string(kMultipartBoundary),
                   "Keep-Alive: 115",
                   "Accept: text/html,application/xhtml+xml,application/xml;q=0.9,*/*;q=0.8",
                   "Content-Length: " + std::to_string(client->getData().size()), kDesktop}));
  EXPECT_EQ(bodySent(),
            "-----------------------------20072377098235644401115438165\r\n"
            "Content-Disposition: form-data; name=\"torrent_file\"; "
            "filename=\"a.torrent\"\r\n"
            "Content-Type: application/x-bittorrent\r\n\r\n" +
                std::string("d\0e", 3) +
                "\r\n-----------------------------20072377098235644401115438165--\r\n");
}

TEST_F(HttpRequestTest, CountsAFormInCharactersAndNeverReusesItsConnection) {
  HttpRequest form = requestTo("/login");
  form.setType("POST");
  form.setPostData("aäb");
  const Lines lines = linesOf(form);
  EXPECT_EQ(lines[1], "Content-Length: 3");
  EXPECT_EQ(bodySent().substr(0, 4).size(), 4U) << "the whole body goes out";
  const int connection = server_.requests().back().connection;
  HttpRequest next = requestTo("/after");
  linesOf(next);
  EXPECT_EQ(server_.requests().back().target, "/after");
  EXPECT_NE(server_.requests().back().connection, connection);
}

TEST_F(HttpRequestTest, SendsTheLanguageCookieToTheBuiltInSiteOnly) {
  SiteConfiguration configuration;
  configuration.defaultSiteHost = "127.0.0.1:1";
  SiteConfiguration::setCurrent(configuration);
  CookieStorage& store = CookieStorage::sharedInstance();
  for (const char* domain : {".127.0.0.1", "127.0.0.1"}) {
    Cookie old;
    old.name = "language";
    old.value = "de_DE";
    old.domain = domain;
    store.insert(old);
  }
  HttpRequest request = requestTo("/recent/0");
  request.request();
  EXPECT_EQ(server_.requests().back().header("Cookie"), "language=en_EN");
  const auto cookies = store.cookies();
  ASSERT_EQ(cookies.size(), 1U);
  EXPECT_EQ(cookies[0].domain, ".127.0.0.1");
  EXPECT_EQ(cookies[0].path, "/");

  SiteConfiguration::setCurrent({});
  store.erase({".127.0.0.1"});
  request.request();
  EXPECT_EQ(server_.requests().back().header("Cookie"), std::nullopt);
  ASSERT_EQ(store.cookies().size(), 1U);
  EXPECT_EQ(store.cookies()[0].domain,
            "." + SiteConfiguration::hostWithoutPort(SiteConfiguration().defaultSiteHost));
}

TEST(HttpRequestOutcomeTest, JudgesByStatusAndDecodesOnlyText) {
  struct Case {
    int status;
    std::string body;
    bool valid;
    std::optional<std::string> result;
  };
  for (const Case& one : {Case{200, "plain", true, "plain"}, Case{299, "ü", true, "ü"},
                          Case{300, "x", false, "x"}, Case{404, "gone", false, "gone"},
                          Case{200, "a\xFF", true, std::nullopt}, Case{200, "", true, ""}}) {
    const RawServer server(
        [&](const RecordedRequest&) { return RawServer::response(one.status, one.body); });
    HttpRequest request(Url::parse(server.url()));
    request.request();
    EXPECT_EQ(request.isResponseValid(), one.valid) << one.status;
    EXPECT_EQ(request.result(), one.result) << one.status;
    EXPECT_EQ(request.responseData(), one.body);
  }
  HttpRequest nowhere(std::nullopt);
  nowhere.request();
  EXPECT_FALSE(nowhere.isResponseValid());
  EXPECT_EQ(nowhere.result(), std::nullopt);
  ASSERT_TRUE(nowhere.failure());
  EXPECT_EQ(nowhere.failure()->kind, TransferFailureKind::NoAddress);
  EXPECT_NE(nowhere.failure()->words, "");
}

TEST(HttpRequestOutcomeTest, AFailedSecondExchangeLeavesNothingOfTheFirst) {
  bool fail = false;
  const RawServer server([&](const RecordedRequest&) -> test::RawReply {
    return fail ? test::RawReply::reset("HTTP/1.1 200 OK\r\nContent-Length: 99\r\n\r\nhalf")
                : RawServer::response(200, "whole");
  });
  HttpRequest request(Url::parse(server.url()));
  request.request();
  EXPECT_TRUE(request.headers());
  EXPECT_FALSE(request.failure());
  fail = true;
  request.request();
  EXPECT_FALSE(request.isResponseValid());
  EXPECT_EQ(request.responseData(), std::nullopt);
  EXPECT_EQ(request.headers(), std::nullopt);
  ASSERT_TRUE(request.failure());
  EXPECT_EQ(request.failure()->kind, TransferFailureKind::BrokenOff);
  EXPECT_EQ(request.failure()->port, server.port());
  fail = false;
  request.request();
  EXPECT_FALSE(request.failure());
}

TEST(HttpRequestRegExTest, KeepsCaptureOneOrThePage) {
  const RawServer server(
      [](const RecordedRequest&) { return RawServer::response(200, "<a>T</a>"); });
  HttpRequestRegEx found(Url::parse(server.url()), "<a>(.*)</a>");
  found.request();
  EXPECT_EQ(found.result(), "T");
  EXPECT_EQ(found.elements(), (std::vector<std::string>{"<a>T</a>", "T"}));
  HttpRequestRegEx missed(Url::parse(server.url()), "<b>(.*)</b>");
  missed.request();
  EXPECT_EQ(missed.result(), "<a>T</a>");
  EXPECT_TRUE(missed.elements().empty());
}

}  // namespace
}  // namespace veltramoor
