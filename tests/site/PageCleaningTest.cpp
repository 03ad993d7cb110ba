// What is left of details, account and forum pages.
#include "site/PageCleaning.h"

#include <gtest/gtest.h>

#include "demo/DemoSite.h"
#include "platform/SiteConfiguration.h"
#include "site/HttpRequestRegExDetails.h"
#include "site/HttpRequestRegExForum.h"
#include "site/HttpRequestRegExProfileDetails.h"
#include "support/RawServer.h"

namespace veltramoor {
namespace {

using test::RawReply;
using test::RawServer;
using test::RecordedRequest;

constexpr char kErrorPage[] = "<html>Error loading page.  Try again.</html>";
constexpr char kHead[] = "<html><head></head>";
constexpr char kFrame[] = "<div id=\"detailsframe\">";
constexpr char kComments[] = "<div id=\"comments\">";
constexpr char kPreferences[] = "<h2><span>Preferences</span></h2>";

/// The page as `Request` leaves it, served over loopback.
template <typename Request>
Request cleaned(const std::string& page) {
  const RawServer server([&](const RecordedRequest&) { return RawServer::response(200, page); });
  Request request(Url::parse(server.url()));
  request.request();
  return request;
}

bool contains(const std::optional<std::string>& page, std::string_view text) {
  return page.value_or("").find(text) != std::string::npos;
}

class PageCleaningTest : public testing::Test {
 protected:
  ~PageCleaningTest() override { SiteConfiguration::setCurrent({}); }
};

TEST_F(PageCleaningTest, CutsTheDetailsOut) {
  const std::string head = kHead;
  const std::string frame = kFrame;
  const std::string comments = kComments;
  const std::string movie = "http://movies.example/title/tt1/";
  struct Case {
    const char* what;
    std::string page;
    std::string result;
    std::optional<std::string> imdb = std::nullopt;
  };
  const std::string noComments = head + frame + "'" + movie + "'</div>";
  for (const Case& c : {
           Case{"the menu and what follows the comments go",
                head + "menu '" + movie + "'" + frame + "a" + comments + "b</div>c</div>",
                head + frame + "a" + comments + "b</div>"},
           Case{"the last head and the last comments",
                head + "x" + head + "y" + frame + frame + comments + "1</div>" + comments +
                    "2</div>3</div>",
                head + "x" + head + frame + frame + comments + "1</div>" + comments + "2</div>"},
           Case{"the first of two links, either quote",
                head + frame + "'" + movie + "' \"http://movies.example/2\"" + comments + "</div>",
                head + frame + "'" + movie + "' \"http://movies.example/2\"" + comments + "</div>",
                movie},
           Case{"a host that only looks alike, and a link over two lines",
                head + frame + "\"http://moviesXexample/1\" 'http://movies.example/\n'" + comments +
                    "</div>",
                head + frame + "\"http://moviesXexample/1\" 'http://movies.example/\n'" + comments +
                    "</div>"},
           Case{"advertising, nested and unclosed",
                head + frame +
                    "1<!-- popunder --><script><div class=\"download\"></script>2"
                    "<div class=\"spons-link wide\"><a>x</a></div>3"
                    "<div class=\"download\"><div class=\"download\">x</div>4</div>5"
                    "<a href=\"http://sponsored.example/p\">\nx</a>6"
                    "<a href=\"http://sponsoredXexample/p\">7</a>" +
                    comments +
                    "<a href=\"http://sponsored.example/unclosed\"><!-- popunder --></div>",
                head + frame + "123" + "4</div>56<a href=\"http://sponsoredXexample/p\">7</a>" +
                    comments +
                    "<a href=\"http://sponsored.example/unclosed\"><!-- popunder --></div>"},
           Case{"no comments", noComments, noComments},
           Case{"no head", frame + comments + "</div>", frame + comments + "</div>"},
           Case{"unclosed comments", head + frame + comments, head + frame + comments},
           Case{"comments before the frame", head + comments + "</div>" + frame,
                head + comments + "</div>" + frame},
           Case{"empty", "", ""},
       }) {
    const auto request = cleaned<HttpRequestRegExDetails>(c.page);
    EXPECT_EQ(request.result(), c.result) << c.what;
    EXPECT_EQ(request.imdb(), c.imdb) << c.what;
  }
}

TEST_F(PageCleaningTest, CutsTheAccountOut) {
  const std::string head = kHead;
  const std::string preferences = kPreferences;
  struct Case {
    const char* what;
    std::string page;
    std::string result;
  };
  for (const Case& c : {
           Case{"to the last foot",
                head + "menu" + preferences + "a<div id=\"foot\">b" + preferences +
                    "c<div id=\"foot\">d",
                head + preferences + "a<div id=\"foot\">b" + preferences + "c"},
           Case{"the pop-under ends at a block here",
                head + preferences +
                    "1<!-- popunder --><script>x</script><div>y</div>2"
                    "<div class=\"spons-link\"></div>3<div class=\"download\"></div>4"
                    "<a href=\"http://sponsored.example:80/\"></a>5<div id=\"foot\"",
                head + preferences + "12345"},
           Case{"no heading", head + "<h2><span>Account</span></h2><div id=\"foot\">", kErrorPage},
           Case{"no foot", head + preferences, kErrorPage},
           Case{"no head", preferences + "<div id=\"foot\"", kErrorPage},
           Case{"empty", "", kErrorPage},
       }) {
    EXPECT_EQ(cleaned<HttpRequestRegExProfileDetails>(c.page).result(), c.result) << c.what;
  }
}

TEST_F(PageCleaningTest, WorksOnWholePagesOfASite) {
  DemoSite site;
  const DemoTorrent* torrent = nullptr;
  for (int id = 0; torrent == nullptr || !torrent->hasMovieLink; ++id) {
    const DemoTorrent* found = site.catalogue().withId(id);
    torrent = found != nullptr ? found : torrent;
  }
  const Url url = *Url::parse(site.url("/torrent/" + std::to_string(torrent->id) + "/x"));
  HttpRequest plain(url);
  plain.request();
  ASSERT_TRUE(contains(plain.result(), "class=\"download\""));
  HttpRequestRegExDetails details(url);
  details.request();
  for (const char* gone : {"popunder", "<div class=\"spons-link", "class=\"download\"",
                           "sponsored.example", "id=\"foot\"", "<main>"}) {
    EXPECT_FALSE(contains(details.result(), gone)) << gone;
  }
  for (const char* kept :
       {"<style>", "detailsframe", "Get this torrent (magnet link)", "<pre>", "id=\"comments\""}) {
    EXPECT_TRUE(contains(details.result(), kept)) << kept;
  }
  EXPECT_TRUE(details.imdb().value_or("").starts_with("http://movies.example/title/tt"));

  site.setFault("/torrent", {.kind = FaultKind::OtherLayout});
  details.request();
  plain.request();
  EXPECT_EQ(details.result(), plain.result());
  EXPECT_EQ(details.imdb(), std::nullopt);
  site.clearFaults();
  for (const FaultKind fault : {FaultKind::Close, FaultKind::InvalidUtf8, FaultKind::Endless}) {
    site.setFault("/", {.kind = fault});
    HttpRequestRegExProfileDetails account(url);
    HttpRequestRegExForum forum(url);
    for (HttpRequest* request :
         {static_cast<HttpRequest*>(&details), static_cast<HttpRequest*>(&account),
          static_cast<HttpRequest*>(&forum)}) {
      request->request();
      EXPECT_EQ(request->result(), std::nullopt);
    }
  }
  EXPECT_EQ(details.imdb(), std::nullopt);
}

TEST_F(PageCleaningTest, HostsAreTextsWhateverTheyHold) {
  SiteConfiguration configuration;
  configuration.movieDatabaseHost = "[::1]:80";
  configuration.sponsoredDownloadHost = "a+(b|c)*.d$^{1}?\\E";
  SiteConfiguration::setCurrent(configuration);
  const std::string advert =
      "<a href=\"http://" + configuration.sponsoredDownloadHost + "/x\">x</a>";
  const auto request = cleaned<HttpRequestRegExDetails>(
      std::string(kHead) + kFrame + "\"http://[::1]:80/t\" " + advert + kComments + "</div>");
  EXPECT_EQ(request.imdb(), "http://[::1]:80/t");
  EXPECT_FALSE(contains(request.result(), "<a href"));
}

TEST_F(PageCleaningTest, GivesUpOnPagesMadeToBeSlow) {
  // Heads and frames in every combination, in front of comments that are closed too early.
  std::string page;
  for (int i = 0; i < 600; ++i) {
    page += "</head><div id=\"detailsframe\">..........";
  }
  page = page + kComments + "</div>" + page + kComments;
  const auto start = std::chrono::steady_clock::now();
  const auto request = cleaned<HttpRequestRegExDetails>(page);
  EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(4));
  EXPECT_TRUE(contains(request.result(), "detailsframe"));

  PageCleaning cleaning;
  EXPECT_TRUE(cleaning.firstMatch("text", "(").empty());
  EXPECT_TRUE(cleaning.firstMatch(std::string(1 << 20, 'a'), "(a|b)*").empty()) << "ICU's stack";
  EXPECT_EQ(cleaning.capture("text", "(", 1), std::nullopt);
  std::string text = "text";
  EXPECT_FALSE(cleaning.removeAll(text, {"(", "e"}));
  EXPECT_TRUE(cleaning.removeAll(text, {"e", "no match", "t$"}));
  EXPECT_EQ(text, "tx");
}

// However little time there is, no page is shown with some of its advertising.
TEST_F(PageCleaningTest, APageThatCannotBeCleanedInTimeIsNotHalfCleaned) {
  std::string adverts;
  for (int i = 0; i < 20'000; ++i) {
    adverts +=
        "<!-- popunder --><div></script></div>"
        "<div class=\"spons-link\"></div><div class=\"download\"></div>";
  }
  const std::string head = kHead;
  const std::string details = head + kFrame + adverts + kComments + "</div>";
  const std::string account = head + kPreferences + adverts + "<div id=\"foot\"";
  const std::string whole = HttpRequestRegExDetails::cleaned(details).value().page;
  EXPECT_EQ(whole.find("spons-link"), std::string::npos);
  const std::string wholeAccount = HttpRequestRegExProfileDetails::cleaned(account).value();
  EXPECT_EQ(wholeAccount, head + kPreferences);
  int inTime = 0;
  int tooLate = 0;
  for (std::chrono::microseconds limit{100}; limit < std::chrono::minutes(1) && inTime < 2;
       limit = limit * 5 / 4) {
    const auto time = std::chrono::duration_cast<std::chrono::milliseconds>(limit);
    const auto page = HttpRequestRegExDetails::cleaned(details, PageCleaning(time));
    const auto other = HttpRequestRegExProfileDetails::cleaned(account, PageCleaning(time));
    EXPECT_EQ(page ? page->page : whole, whole) << limit.count();
    EXPECT_EQ(other.value_or(wholeAccount), wholeAccount) << limit.count();
    inTime += page && other ? 1 : 0;
    tooLate += page || other ? 0 : 1;
  }
  EXPECT_GT(inTime, 0);
  EXPECT_GT(tooLate, 0);
}

TEST_F(PageCleaningTest, TheForumIsAskedAsAHandsetAndLeftAsItIs) {
  const RawServer server([](const RecordedRequest&) {
    return RawServer::response(200, "<div class=\"download\">x</div>");
  });
  HttpRequestRegExForum request(Url::parse(server.url()));
  request.request();
  EXPECT_EQ(request.result(), "<div class=\"download\">x</div>");
  EXPECT_NE(server.requests().at(0).header("User-Agent").value_or("").find("Mobile/1C25"),
            std::string::npos);
}

}  // namespace
}  // namespace veltramoor
