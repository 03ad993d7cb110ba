#include "demo/DemoSite.h"

#include <fmt/format.h>
#include <gtest/gtest.h>
#include <signal.h>

#include <algorithm>
#include <atomic>
#include <cstdio>
#include <filesystem>
#include <map>
#include <regex>
#include <set>
#include <thread>

#include "demo/Fetch.h"
#include "demo/Vocabulary.h"
#include "demo/Wording.h"
#include "regex/RegexKitLiteAdditions.h"
#include "site/TorrentScraping.h"
#include "support/Places.h"

namespace veltramoor {
namespace {

using test::Client;
using test::Rows;

Rows rowsOf(const std::string& page) {
  return arrayOfCaptureComponentsMatchedByRegex(page, kTorrentRowRegex);
}

int idOf(const std::vector<std::string>& row) {
  return std::stoi(row.at(2).substr(std::string("/torrent/").size()));
}

bool contains(const std::string& text, const std::string& part) {
  return text.find(part) != std::string::npos;
}

TEST(DemoSiteTest, ListingPagesLookRealAndTheRowExpressionReadsTheirRows) {
  const DemoSite site;
  Client client;
  std::string dates;
  for (const std::string path : {"/recent/0", "/recent/1", "/recent/4", "/recent/9", "/recent/60",
                                 "/browse/200/2/7", "/browse/101/0/3", "/search/the/0/99/0"}) {
    const auto page = client.get(site.url(path));
    EXPECT_EQ(page.status, 200) << path;
    EXPECT_TRUE(contains(page.header, "Content-Type: text/html; charset=utf-8")) << page.header;
    EXPECT_GT(page.body.size(), 60'000U) << path;
    EXPECT_LT(page.body.size(), 110'000U) << path;
    const Rows rows = rowsOf(page.body);
    ASSERT_EQ(rows.size(), 30U) << path;
    for (const auto& row : rows) {
      const DemoTorrent* torrent = site.catalogue().withId(idOf(row));
      ASSERT_NE(torrent, nullptr) << row[2];
      EXPECT_EQ(row[1], std::to_string(torrent->category));
      EXPECT_EQ(row[3], escapeHtml(torrent->name));
      EXPECT_TRUE(
          std::regex_match(row[4], std::regex("magnet:\\?xt=urn:btih:[0-9a-f]{40}&dn=[^&\"<> ]+"
                                              "(&tr=[^&\"<> ]*tracker\\.example[^&\"<> ]*){3}")))
          << row[4];
      EXPECT_EQ(row[5], dateMarkup(torrent->minutesAgo));
      EXPECT_TRUE(std::regex_match(row[6], std::regex("\\d+\\.\\d&nbsp;[KMG]iB"))) << row[6];
      EXPECT_EQ(row[7], std::to_string(torrent->seeders));
      EXPECT_EQ(row[8], std::to_string(torrent->leechers));
      dates += row[5] + "\n";
    }
  }
  for (const std::string form :
       {"<b>\\d+&nbsp;mins&nbsp;ago</b>", "Today&nbsp;\\d\\d:\\d\\d", "Y-day&nbsp;\\d\\d:\\d\\d",
        "\\d\\d-\\d\\d&nbsp;\\d\\d:\\d\\d", "\\d\\d-\\d\\d&nbsp;20\\d\\d"}) {
    EXPECT_TRUE(std::regex_search(dates, std::regex(form))) << form;
  }
}

TEST(DemoSiteTest, TheCatalogueHasWhatListsStumbleOver) {
  const Catalogue catalogue(1, 3000);
  std::set<std::string> names;
  std::set<std::string> hashes;
  std::map<int, int> categories;
  std::size_t longest = 0;
  std::string letters;
  int films = 0;
  int linked = 0;
  for (const DemoTorrent& torrent : catalogue.all()) {
    names.insert(torrent.name);
    hashes.insert(torrent.infoHash);
    ++categories[torrent.category];
    longest = std::max(longest, torrent.name.size());
    letters += torrent.name;
    films += demoCategory(torrent.category)->film ? 1 : 0;
    linked += torrent.hasMovieLink ? 1 : 0;
  }
  EXPECT_LT(names.size(), 3000U) << "no name stands twice";
  EXPECT_EQ(hashes.size(), 3000U);
  EXPECT_EQ(categories.size(), 38U) << "a category is empty";
  EXPECT_GE(longest, 120U);
  EXPECT_NEAR(linked, films / 2, films / 8);
  for (const char* part : {"&", "\"", "'", "[", "<", "é", "Хроника", "星"}) {
    EXPECT_TRUE(contains(letters, part)) << part;
  }
}

TEST(DemoSiteTest, PagingShowsEveryTorrentOnceAndThenPagesWithoutRows) {
  const DemoSite site({.torrents = 215});
  Client client;
  struct List {
    std::string before, after;
    DemoQuery query;
  };
  for (const List& list : {List{"/recent/", "", {}}, List{"/browse/200/", "/5", {.category = 200}},
                           List{"/search/THE%20", "/99/0", {.words = "the"}},
                           List{"/user/anna/", "/99", {.uploader = "anna"}}}) {
    std::multiset<int> expected;
    for (const DemoTorrent* torrent : site.catalogue().find(list.query)) {
      expected.insert(torrent->id);
    }
    ASSERT_FALSE(expected.empty()) << list.before;
    std::multiset<int> seen;
    const std::size_t pages = (expected.size() + 29) / 30;
    for (std::size_t number = 0; number <= pages; ++number) {
      const std::string slash = list.before.starts_with("/search") ? "/" : "";
      const auto page =
          client.get(site.url(fmt::format("{}{}{}{}", list.before, slash, number, list.after)));
      const Rows rows = rowsOf(page.body);
      const std::size_t left = expected.size() - seen.size();
      EXPECT_EQ(rows.size(), std::min<std::size_t>(30, left)) << list.before << number;
      for (const auto& row : rows) {
        seen.insert(idOf(row));
      }
    }
    EXPECT_EQ(seen, expected) << list.before;
  }
  EXPECT_EQ(rowsOf(client.get(site.url("/recent/99999999999999999999")).body).size(), 30U)
      << "a number that is none counts as 0";
}

TEST(DemoSiteTest, OrdersSortAndCategoriesFilter) {
  const DemoSite site({.torrents = 900});
  Client client;
  const auto fetch = [&](const std::string& path) {
    std::vector<const DemoTorrent*> found;
    for (const auto& row : rowsOf(client.get(site.url(path)).body)) {
      found.push_back(site.catalogue().withId(idOf(row)));
    }
    return found;
  };
  const auto key = [](const DemoTorrent& torrent, int order) -> std::int64_t {
    switch (order) {
      case 5:
      case 6:
        return static_cast<std::int64_t>(torrent.bytes);
      case 7:
      case 8:
        return torrent.seeders;
      case 9:
      case 10:
        return torrent.leechers;
      default:
        return -torrent.minutesAgo;
    }
  };
  for (const int order : {3, 99, 100, 5, 6, 7, 8, 9, 10}) {
    const auto found = fetch(fmt::format("/browse/300/0/{}", order));
    ASSERT_EQ(found.size(), 30U);
    const bool ascending = order == 100 || order == 6 || order == 8 || order == 10;
    for (std::size_t i = 1; i < found.size(); ++i) {
      const auto earlier = key(*found[i - 1], order);
      const auto later = key(*found[i], order);
      EXPECT_TRUE(ascending ? earlier <= later : earlier >= later) << order << " at " << i;
    }
    EXPECT_NE(key(*found.front(), order), key(*found.back(), order)) << order;
  }
  for (const DemoCategory& category : demoCategories()) {
    const auto found = fetch(fmt::format("/browse/{}/0/99/", category.code));
    EXPECT_FALSE(found.empty()) << category.code;
    for (const DemoTorrent* torrent : found) {
      EXPECT_EQ(torrent->category, category.code);
    }
  }
  const auto top = fetch("/top/all");
  ASSERT_EQ(top.size(), 100U);
  EXPECT_EQ(top[0], site.catalogue().find({.order = 7})[0]);
  const auto group = fetch("/top/600");
  EXPECT_GT(group.size(), 30U);
  for (const DemoTorrent* torrent : group) {
    EXPECT_EQ(torrent->category / 100, 6);
  }
  EXPECT_TRUE(fetch("/browse/777/0/99").empty());
  EXPECT_TRUE(fetch("/user/Anonymous/0/99").empty());
  for (const DemoTorrent* torrent : fetch("/search/caf%C3%89/0/99/200")) {
    EXPECT_TRUE(contains(torrent->name, "Café") && torrent->category / 100 == 2) << torrent->name;
  }
}

TEST(DemoSiteTest, SameSeedSameBytes) {
  std::vector<std::string> pages;
  for (const std::uint64_t seed : {7U, 7U, 8U}) {
    const DemoSite site({.torrents = 300, .seed = seed, .hostName = "index.example"});
    Client client;
    const int id = site.catalogue().all()[3].id;
    std::string all;
    for (const std::string& path :
         {std::string("/"), std::string("/recent/1"), std::string("/top/all"),
          std::string("/forum/topic/3"), fmt::format("/torrent/{}/x", id)}) {
      all += client.get(site.url(path)).body;
    }
    pages.push_back(all);
  }
  EXPECT_EQ(pages[0], pages[1]);
  EXPECT_NE(pages[0], pages[2]);
}

TEST(DemoSiteTest, DetailsPagesHaveWhatTheCleanerCutsOut) {
  const DemoSite site;
  Client client;
  int links = 0;
  for (const DemoTorrent* torrent : site.catalogue().find({.category = 201})) {
    const auto page =
        client.get(site.url(fmt::format("/torrent/{}/{}", torrent->id, slug(torrent->name)))).body;
    const auto parts = captureComponentsMatchedByRegex(
        page,
        R"re(([\s\S]*</head>)[\s\S]*?(<div id="detailsframe">[\s\S]*<div id="comments">[\s\S]*?</div>))re");
    ASSERT_EQ(parts.size(), 3U);
    for (const char* part :
         {"<!-- popunder -->", "<div class=\"spons-link", "<div class=\"download\">",
          "<a href=\"http://sponsored.example", "target=\"_blank\"", ".torrent\">"}) {
      EXPECT_TRUE(contains(parts[2], part)) << part;
    }
    EXPECT_TRUE(contains(parts[2], escapeHtml(torrent->name)));
    EXPECT_FALSE(contains(parts[2], "<a>") || contains(parts[2], "<a name"));
    const auto link = stringByMatching(page, "[\"'](http://movies\\.example/.*?)[\"']", 1);
    EXPECT_EQ(link.has_value(), torrent->hasMovieLink);
    links += link ? 1 : 0;
    if (links > 3) {
      break;
    }
  }
  EXPECT_GT(links, 3);
  EXPECT_EQ(client.get(site.url("/torrent/1/x")).status, 404);
  EXPECT_TRUE(client.get(site.url("/img/207.png")).body.starts_with("\x89PNG"));
  EXPECT_TRUE(client.get(site.url("/static/img/icon-magnet.gif")).body.starts_with("GIF89a"));
}

TEST(DemoSiteTest, SigningInAndOut) {
  DemoSite site;
  Client client;
  const std::string form = "action=\"/login\" name=\"loginform\"";
  const auto settings = [&] { return client.get(site.url("/settings")).body; };
  const auto user = [&] {
    const auto found = captureComponentsMatchedByRegex(
        settings(), R"(Username:.*?<td>(.*?)</td>[\s\S]*?Status:.*?<td>(.*?)</td>)");
    return found.size() == 3 ? found[1] + "/" + found[2] : "nobody";
  };

  EXPECT_TRUE(contains(settings(), form));
  EXPECT_NEAR(static_cast<double>(settings().size()), 32'000, 8'000);
  const auto wrong = client.post(site.url("/login"), "username=demo&password=x&act=login");
  EXPECT_EQ(wrong.status, 200);
  EXPECT_TRUE(contains(wrong.body, form) && contains(wrong.body, "check username and password."));
  EXPECT_EQ(user(), "nobody");

  const std::string anna =
      "username=anna&password=p%26%3D%25%2B%C3%A9%20word&act=login&submit=Login";
  const auto right = client.post(site.url("/login"), anna);
  EXPECT_EQ(right.status, 302);
  EXPECT_TRUE(contains(right.header, "Location: /settings"));
  EXPECT_TRUE(contains(right.header, "Set-Cookie: uid=2002; Domain=127.0.0.1; Path=/"));
  EXPECT_EQ(user(), " anna /trusted member");
  EXPECT_FALSE(contains(settings(), form));
  EXPECT_EQ(
      captureComponentsMatchedByRegex(
          settings(), R"re(([\s\S]*</head>)[\s\S]*?(<h2><span>Preferences[\s\S]*)<div id="foot")re")
          .size(),
      3U);
  EXPECT_EQ(site.log().back().cookie("uid"), "2002");

  client.get(site.url("/logout"));
  EXPECT_EQ(user(), "nobody");
  site.setLoginAnswer(LoginAnswer::SettingsPage);
  EXPECT_TRUE(contains(client.post(site.url("/login"), anna).body, "Preferences"));
  site.expireSessions();
  EXPECT_EQ(user(), "nobody");

  const DemoSite named({.hostName = "index.example:8080"});
  client.host = "www.index.example:8080";
  EXPECT_TRUE(contains(client.post(named.url("/login"), anna).header, "Domain=index.example;"));
}

TEST(DemoSiteTest, LanguageNoticeForumAndHome) {
  DemoSite site({.notice = "GO:Hello", .requireLanguage = true});
  Client client;
  EXPECT_EQ(rowsOf(client.get(site.url("/recent/0")).body).size(), 0U);
  EXPECT_TRUE(contains(client.get(site.url("/recent/0")).body, "Hochgeladen"));
  EXPECT_EQ(client.get(site.url("/language/en_EN")).status, 302);
  EXPECT_EQ(rowsOf(client.get(site.url("/recent/0")).body).size(), 30U);

  const std::string notice = site.url("/veltramoor.php?v=1&m=x&p=2");
  EXPECT_EQ(client.get(notice).body, "GO:Hello");
  site.setNotice("");
  EXPECT_EQ(client.get(notice).body, "");

  EXPECT_TRUE(contains(client.get(site.url("/")).body, "Open Index (demo)"));
  const auto front = client.get(site.url("/forum/")).body;
  EXPECT_TRUE(contains(front, "href=\"/forum/topic/1\"") && contains(front, "elsewhere.example"));
  client.host = "forum.index.example";
  EXPECT_TRUE(contains(client.get(site.url("/")).body, "href=\"/topic/1\""));
  EXPECT_TRUE(contains(client.get(site.url("/topic/1")).body, "class=\"post\""));
}

TEST(DemoSiteTest, ManyClientsAtOnceAndGzip) {
  const DemoSite site;
  const std::string plain = Client().get(site.url("/recent/2")).body;
  std::vector<std::jthread> threads;
  std::atomic<int> same = 0;
  for (int i = 0; i < 10; ++i) {
    threads.emplace_back([&] {
      Client client;
      client.gzip = true;
      for (int j = 0; j < 10; ++j) {
        const auto page = client.get(site.url("/recent/2"));
        same += page.body == plain && contains(page.header, "Content-Encoding: gzip") &&
                        static_cast<std::size_t>(page.received) < plain.size() / 3
                    ? 1
                    : 0;
      }
    });
  }
  threads.clear();
  EXPECT_EQ(same, 100);
  EXPECT_EQ(site.log().size(), 101U);
}

TEST(DemoSiteTest, TheProgramSaysWhereItListensAndEndsWithItsInputOrAtASignal) {
  const std::string program = test::program("veltramoor-demo-site");
  if (!std::filesystem::exists(program)) {
    GTEST_SKIP() << program << " is not built";
  }
  // Which signal is sent; 0: its standard input is at its end from the start.
  for (const int signal : {0, SIGTERM, SIGINT}) {
    std::FILE* pipe = ::popen(("echo $$; exec " + program + " --torrents 10" +
                               (signal == 0 ? " --until-eof < /dev/null" : ""))
                                  .c_str(),
                              "r");
    ASSERT_NE(pipe, nullptr);
    int process = 0;
    char line[100] = "";
    ASSERT_EQ(std::fscanf(pipe, "%d\n", &process), 1);
    EXPECT_NE(std::fgets(line, sizeof line, pipe), nullptr);
    EXPECT_TRUE(std::regex_match(line, std::regex("listening on 127\\.0\\.0\\.1:\\d+\n"))) << line;
    if (signal != 0) {
      EXPECT_EQ(::kill(process, signal), 0);
    }
    EXPECT_EQ(::pclose(pipe), 0) << "signal " << signal;
  }
}

}  // namespace
}  // namespace veltramoor
