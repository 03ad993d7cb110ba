// What a page that lists nothing turns out to be.
#include "site/PageTrouble.h"

#include <gtest/gtest.h>

#include <atomic>

#include "site/HttpRequestRegExTorrent.h"
#include "support/ListingPage.h"
#include "support/RawServer.h"
#include "support/SharedCookies.h"

namespace veltramoor {
namespace {

using test::RawReply;
using test::RawServer;
using test::RecordedRequest;
using Kind = PageTrouble::Kind;

struct Answer {
  RawReply reply;
  Kind kind;
  std::string sentence;
};

TEST(PageTroubleTest, TellsWhatTheSiteAnsweredInPlaceOfRows) {
  const RawServer elsewhere([](const RecordedRequest&) { return RawServer::response(200, "Hi"); });
  const std::string newHost = "http://localhost:" + std::to_string(elsewhere.port()) + "/";
  const std::vector<Answer> answers = {
      {RawReply::reset(), Kind::NotReached, "127.0.0.1 broke the connection off."},
      {RawReply::close("HTTP/1.1 200 OK\r\nContent-Length: 100\r\n\r\nhalf"), Kind::NotReached,
       "127.0.0.1 broke the connection off."},
      {RawServer::response(403, "<title>No</title>"), Kind::ErrorStatus,
       "The site answered with an error (403)."},
      {RawServer::response(404), Kind::ErrorStatus, "The site answered with an error (404)."},
      {RawServer::response(500), Kind::ErrorStatus, "The site answered with an error (500)."},
      {RawServer::response(503, "<form><input type=password>"), Kind::ErrorStatus,
       "The site answered with an error (503)."},
      {RawServer::response(301, "", {"Location: " + newHost}), Kind::Moved,
       "The site has moved: localhost answered in its place."},
      {RawServer::response(200, "<html><FORM><input name=p TYPE='Password'>"), Kind::SignedOut,
       "The page lists nothing and has a login form: perhaps you are signed out."},
      {RawServer::response(200), Kind::NoRows, "The page is empty."},
      {RawServer::response(200,
                           "<html><title>\n No &amp; hits\x01</title>" + std::string(5000, ' ')),
       Kind::NoRows, "The page has 5 KB and the title \"No & hits\"."},
      {RawServer::response(200, "<html>\xFF"), Kind::NoRows, "The page has 7 bytes and no title."},
      {RawServer::response(200, "<title>" + std::string(90, 'x') + "</title>"), Kind::NoRows,
       "The page has 105 bytes and the title \"" + std::string(57, 'x') + "...\"."},
      {RawServer::response(200, "<title" + std::string(99, '<')), Kind::NoRows,
       "The page has 105 bytes and no title."},
  };
  std::atomic<std::size_t> next{0};
  const RawServer site([&](const RecordedRequest&) { return answers[next].reply; });
  for (; next < answers.size(); ++next) {
    HttpRequestRegExTorrent request(Url::parse(site.url("/recent/0")));
    request.request();
    ASSERT_TRUE(request.trouble()) << answers[next].sentence;
    EXPECT_EQ(request.trouble()->kind, answers[next].kind) << answers[next].sentence;
    EXPECT_EQ(sentenceOf(*request.trouble()), answers[next].sentence);
    EXPECT_EQ(request.trouble()->mayBeEmptyList(),
              answers[next].kind == Kind::NoRows || answers[next].kind == Kind::SignedOut);
  }
  const RawServer leadsToLogin([](const RecordedRequest& asked) {
    return asked.target == "/login" ? RawServer::response(200, "<input type=password>")
                                    : RawServer::response(302, "", {"Location: /login"});
  });
  HttpRequestRegExTorrent sentAway(Url::parse(leadsToLogin.url("/recent/0")));
  sentAway.request();
  EXPECT_EQ(sentenceOf(sentAway.trouble().value()), "The site asks you to sign in.");
  EXPECT_FALSE(sentAway.trouble()->mayBeEmptyList());
  // Rows are rows, whatever stands around them.
  const RawServer odd([](const RecordedRequest&) {
    return RawServer::response(500, "<input type=password>" + test::listingPage({"A"}));
  });
  HttpRequestRegExTorrent request(Url::parse(odd.url("/recent/0")));
  request.request();
  EXPECT_EQ(request.torrents().value().size(), 1U);
  EXPECT_FALSE(request.trouble());
}

}  // namespace
}  // namespace veltramoor
