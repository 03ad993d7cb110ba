#include "site/TorrentScraping.h"

#include <gtest/gtest.h>

#include <fmt/format.h>

#include "platform/CookieStorage.h"
#include "site/HttpRequestRegExUserInfo.h"
#include "site/UserInfo.h"
#include "support/SharedCookies.h"

namespace veltramoor {
namespace {

struct Row {
  std::string category = "303";
  std::string path = "/torrent/7/Film";
  std::string name = "Film";
  std::string link = "magnet:?xt=urn:btih:0";
  std::string words = "Uploaded 11-20&nbsp;14:03, Size 701.2&nbsp;MiB,";
  std::string up = "12";
  std::string down = "3";
};

// Every line goes on with what a field that did not end at its first mark would take in.
std::string html(const Row& row) {
  return fmt::format(
      "<tr>\n<td class=\"t\"><a href=\"/browse/{}\">c</a> <a href=\"/browse/1\">d</a></td>\n"
      "<td><a href=\"{}\" class=\"d\">{}</a> <a href=\"/torrent/8/Other\">Other</a>\n"
      "<a href=\"{}\">m</a> <a href=\"magnet:?other\">n</a>\n"
      "<font>{} ULed by x, Size y, z</font></td>\n"
      "<td align=\"right\">{}</td> <td align=\"right\">{}</td> <td>9</td>\n</tr>\n",
      row.category, row.path, row.name, row.link, row.words, row.up, row.down);
}

Torrent only(const Row& row, const std::vector<std::string>& history = {}) {
  const auto torrents = torrentsInPage("<html><table>" + html(row) + "</table>", history);
  EXPECT_EQ(torrents.size(), 1U);
  return torrents.empty() ? Torrent{} : torrents[0];
}

TEST(TorrentScrapingTest, TakesEveryFieldFromItsPlace) {
  const Torrent torrent = only({});
  EXPECT_EQ(torrent.type, "303.png");
  EXPECT_EQ(torrent.detailsUrl, "/torrent/7/Film");
  EXPECT_EQ(torrent.name, "Film");
  EXPECT_EQ(torrent.downloadUrl, "magnet:?xt=urn:btih:0");
  EXPECT_EQ(torrent.date, "11-20\u00a014:03");
  EXPECT_EQ(torrent.size, "701.2\u00a0MiB");
  EXPECT_EQ(torrent.up, "12");
  EXPECT_EQ(torrent.down, "3");
  EXPECT_FALSE(torrent.isDownloaded);
  EXPECT_EQ(torrent.wait, std::nullopt);
}

TEST(TorrentScrapingTest, DecodesWhatIsShownAndEscapesWhatIsSent) {
  Row row;
  row.category = "";
  row.name = "Q &amp; <i>A</i> &amp;lt; \u00e9";
  row.link = "magnet:?dn=a b&amp;tr=%3A%zz\u00e9'";
  row.words = "Uploaded <b>5&nbsp;mins</b> <b>ago</b>, Size 1&nbsp;KiB,";
  const Torrent torrent = only(row, {"Q & <i>A</i> &lt; \u00e9"});
  EXPECT_EQ(torrent.type, ".png");
  EXPECT_EQ(torrent.name, "Q & <i>A</i> &lt; \u00e9");
  EXPECT_EQ(torrent.downloadUrl, "magnet:?dn=a%20b&amp;tr=%3A%25zz%C3%A9'");
  EXPECT_EQ(torrent.date, "5\u00a0mins ago");
  EXPECT_TRUE(torrent.isDownloaded) << "the decoded name is what the history holds";
  EXPECT_FALSE(only(row, {"q & <i>A</i> &lt; \u00e9"}).isDownloaded);
}

TEST(TorrentScrapingTest, ARowWithoutAPieceRunsOnIntoTheNext) {
  Row broken;
  broken.words = "no date here";
  Row good;
  good.name = "Second";
  good.words = "Uploaded today, Size 2 KiB,";
  const auto torrents = torrentsInPage(html(broken) + html(good), {});
  ASSERT_EQ(torrents.size(), 1U);
  EXPECT_EQ(torrents[0].name, "Film");
  EXPECT_EQ(torrents[0].date, "today");
  EXPECT_EQ(torrentsInPage(html(good) + html(broken) + html(good) + html(good), {}).size(), 3U);
  EXPECT_TRUE(torrentsInPage("<html>login</html>", {}).empty());
  EXPECT_TRUE(torrentsInPage("", {}).empty());
}

void parseUser(const std::string& page) {
  HttpRequestRegExUserInfo request;
  request.setResponseData(page);
  request.request();
}

TEST(UserInfoTest, ReadsTheAccountPageAndFallsBackToAnonymous) {
  test::eraseSharedCookies();
  CookieStorage& cookies = CookieStorage::sharedInstance();
  for (const char* domain : {"a.example", "b.example"}) {
    Cookie uid;
    uid.name = "uid";
    uid.value = std::string("of ") + domain;
    uid.domain = domain;
    cookies.insert(uid);
  }
  UserInfo& user = UserInfo::sharedInstance();
  parseUser("<tr><td>Username:</td><td> anna\n</td>");
  EXPECT_EQ(user.username(), "Anonymous") << "the cell must end on its line";
  parseUser("Username:</td><td> \tanna </td>\n<b>Status:</b><td>trusted mEMBER</td>");
  EXPECT_EQ(user.username(), "anna");
  EXPECT_EQ(user.ratio(), "Trusted Member");
  EXPECT_EQ(user.ids(), "of b.example");
  parseUser("\xff");
  EXPECT_EQ(user.username(), "anna") << "an unreadable page changes nothing";
  parseUser("0");
  EXPECT_EQ(user.username(), "Anonymous");
  EXPECT_EQ(user.ratio(), "N/A");
  EXPECT_EQ(user.ids(), std::nullopt);
}

}  // namespace
}  // namespace veltramoor
