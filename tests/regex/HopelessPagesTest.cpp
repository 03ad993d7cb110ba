// Ordinary pages on which ICU by itself is busy for seconds to days.
#include <gtest/gtest.h>

#include <string>

#include "regex/RegexKitLiteAdditions.h"
#include "site/HttpRequestRegExDetails.h"
#include "site/HttpRequestRegExProfileDetails.h"
#include "site/TorrentScraping.h"

namespace veltramoor {
namespace {

std::string repeated(int times, std::string_view text) {
  std::string result;
  for (int i = 0; i < times; ++i) {
    result += text;
  }
  return result;
}

std::string row(std::string_view browse, std::string_view uploaded) {
  std::string text = "<tr>\n<td class=\"vertTh\"><a href=\"/browse/300\">A</a><a href=\"";
  text.append(browse).append("\" title=\"B\">B</a></td>\n<td>\n");
  text += "<a href=\"/torrent/123/Name\" class=\"detLink\">Name</a>\n";
  text += "<a href=\"magnet:?xt=urn:btih:00\"><img src=\"m.gif\"></a><font>";
  text.append(uploaded).append(" 11-20, Size 1 MiB, by</font></td>\n");
  return text + "<td align=\"right\">12</td>\n<td align=\"right\">3</td>\n</tr>\n";
}

const std::string kMenu = repeated(300, "<div><a href=\"/top\">Top</a>, <b>text</b></div>\n");

std::string listing(int good, int withoutUploaded) {
  return kMenu + repeated(good, row("/browse/303", "Uploaded")) +
         repeated(withoutUploaded, row("/browse/303", "Added")) + kMenu;
}

TEST(HopelessPages, AreSettledWithoutTheClock) {
  const std::string head = "<html><head><title>t</title></head>\n";
  const std::string scripts = repeated(400, "<script>if (a < b) { c(\"</td>\"); }</script>\n");
  struct Case {
    const char* what;
    std::string page;
    std::string_view regex;
    std::size_t matches;
  };
  const Case cases[] = {
      {"whole page", listing(30, 0), kTorrentRowRegex, 30},
      {"last three incomplete", listing(27, 3), kTorrentRowRegex, 27},
      {"last ten incomplete", listing(20, 10), kTorrentRowRegex, 20},
      {"all incomplete", listing(0, 30), kTorrentRowRegex, 0},
      {"another layout: uploads without size",
       kMenu + repeated(100,
                        "<tr><td><a href=\"/browse/1\">x</a></td>\n<td><a href=\"/torrent/2\">"
                        "n</a> <a href=\"magnet:?x\">m</a></td><td>Uploaded 1, 2,</td></tr>\n"),
       kTorrentRowRegex, 0},
      {"another layout: the size on a line of its own",
       kMenu + repeated(100,
                        "<tr>\n<td><a href=\"/browse/1\">x</a></td>\n<td>"
                        "<a href=\"/torrent/2\">n</a>\n<a href=\"magnet:?x\">m</a>\nUploaded 1"
                        "\n, Size 2, by</td>\n<td>1</td>\n<td>2</td>\n</tr>\n"),
       kTorrentRowRegex, 0},
      {"another layout: names for numbers", kMenu + repeated(100, row("/browse/a", "Added")),
       kTorrentRowRegex, 0},
      {"megabyte without rows",
       repeated(12000,
                "<p>A line of text with <a href=\"/x\">x</a>, some "
                "markup and nothing else.</p>\n"),
       kTorrentRowRegex, 0},
      {"details without comments",
       head + scripts + repeated(40, "<div id=\"detailsframe\"><div>text</div>\n") + scripts,
       kDetailsRegex, 0},
      {"sign-in page for the account", repeated(40, head) + scripts, kAccountRegex, 0},
      {"list for the account", head + listing(30, 0), kAccountRegex, 0},
      {"unclosed advertising blocks", repeated(5000, "<div class=\"download\">\n"),
       R"re(<div class="download">[\s\S]*?</div>)re", 0},
      {"unclosed links", repeated(5000, "<a href=\"http://ads.example/"),
       R"re(<a href="http://ads\.example[\s\S]*?</a>)re", 0},
      {"filter without a match", repeated(20000, "Some.Name."), ".*(x264).*", 0},
      {"filter that begins anew everywhere", repeated(20000, "Some.Name.x264."), ".*(x264[^.]).*",
       0},
  };
  for (const Case& c : cases) {
    RegexMatching matching;
    const auto found = arrayOfCaptureComponentsMatchedByRegex(c.page, c.regex, &matching);
    EXPECT_EQ(found.size(), c.matches) << c.what;
    EXPECT_FALSE(matching.timedOut) << c.what;
  }
}

TEST(HopelessPages, WhatIsLeftEndsAtTheClock) {
  // Heads and frames in every combination; all literals are there, but the match lies far back.
  const std::string frames = repeated(300, "</head><div id=\"detailsframe\">..........");
  const std::string comments = "<div id=\"comments\">";
  const struct {
    std::string page;
    std::string_view regex;
  } cases[] = {
      {frames + comments + "</div>" + frames + comments, kDetailsRegex},
      {std::string(300, 'a') + "!", ".*((a+)+$).*"},
      {std::string(300, 'a') + "!", "[^b](a+)+$"},
      {std::string(300, 'a') + "!", "(?i)(A+)+$"},
  };
  for (const auto& c : cases) {
    RegexMatching matching{.timeLimit = std::chrono::milliseconds(50)};
    EXPECT_TRUE(captureComponentsMatchedByRegex(c.page, c.regex, &matching).empty()) << c.regex;
    EXPECT_TRUE(matching.timedOut) << c.regex;
  }
}

}  // namespace
}  // namespace veltramoor
