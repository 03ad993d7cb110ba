// The terminal's lists: options, pages, whom the cookies sign in.
#include <algorithm>
#include <cstdlib>
#include <set>
#include <sstream>
#include <string_view>

#include "PreferencesKeys.h"
#include "demo/Accounts.h"
#include "platform/CookieStorage.h"
#include "platform/Preferences.h"
#include "platform/StateFile.h"
#include "support/RawServer.h"
#include "veltramoor-cli/CliFixture.h"

namespace veltramoor {
namespace {

class CliListsTest : public test::CliFixture {
 protected:
  // The programs share the state folder with this test and with no other.
  CliListsTest() { setenv("XDG_DATA_HOME", dataHome_.c_str(), 1); }
  ~CliListsTest() override { setenv("XDG_DATA_HOME", before_.c_str(), 1); }

  /// The rows printed; those of a run that failed are as many as came.
  std::size_t rows(std::vector<std::string> arguments) { return json(std::move(arguments)).size(); }
  std::vector<std::string> asked() {
    std::vector<std::string> targets;
    for (const DemoRequest& request : site_.log()) {
      targets.push_back(request.target);
    }
    site_.clearLog();
    return targets;
  }

  const std::string before_ = getenv("XDG_DATA_HOME");
};

TEST_F(CliListsTest, OptionsHoldForOneCommand) {
  {
    Preferences stored(defaultStateFile());
    for (const std::string_view key :
         {PreferencesKeys::recentCategory, PreferencesKeys::searchCategory,
          PreferencesKeys::top100Category, PreferencesKeys::favoriteCategory}) {
      stored.setString(key, "205");
    }
    for (const std::string_view key :
         {PreferencesKeys::recentOrderBy, PreferencesKeys::searchOrderBy,
          PreferencesKeys::uploadOrderBy, PreferencesKeys::favoritesCount}) {
      stored.setString(key, "7");
    }
    for (const std::string_view key : {PreferencesKeys::recentSortBy, PreferencesKeys::searchSortBy,
                                       PreferencesKeys::uploadSortBy}) {
      stored.setString(key, "asc");
    }
  }
  struct Case {
    std::vector<std::string> arguments;
    std::vector<std::string> targets;
  };
  for (const Case& one : std::initializer_list<Case>{
           {{"search", "zzzz"}, {"/search/zzzz/0/99/0"}},
           {{"search", "zz zz%", "--order", "Seeders", "--sort", "asc", "--category", "201"},
            {"/search/zz%20zz%25/0/8/201"}},
           {{"search", "zzzz", "--order", "99", "--page", "4", "--pages", "3"},
            {"/search/zzzz/4/99/0"}},
           {{"search", "zzzz"}, {"/search/zzzz/0/99/0"}},
           {{"search", "é"}, {"/search/(null)/0/99/0"}},
           {{"top"}, {"/top/all"}},
           {{"top", "--category", "100"}, {"/top/100"}},
           {{"recent"}, {"/recent/0"}},
           {{"recent", "--category", "0", "--page", "1", "--pages", "2"},
            {"/recent/1", "/recent/2"}},
           {{"recent", "--category", "201"}, {"/browse/201/0/99/"}},
           {{"recent", "--order", "SIZE", "--sort", "asc", "--category", "205"},
            {"/browse/205/0/6/"}},
           {{"uploads", "--page", "00"}, {"/user/Anonymous/0/99"}},
           {{"uploads", "--order", "leechers", "--page", "2"}, {"/user/Anonymous/2/9"}}}) {
    run(one.arguments);
    EXPECT_EQ(status_, 0) << testing::PrintToString(one.arguments);
    EXPECT_EQ(asked(), one.targets);
  }
  run({"details", "1"});
  EXPECT_EQ(asked().front(), "/recent/0");
  run({"favourites"});
  std::vector<std::string> pages = asked();
  std::ranges::sort(pages);
  EXPECT_EQ(pages, (std::vector<std::string>{"/recent/0", "/recent/1", "/recent/2", "/recent/3",
                                             "/recent/4"}));
  EXPECT_EQ(Preferences(defaultStateFile()).string(PreferencesKeys::recentCategory), "205");
}

TEST_F(CliListsTest, RowsStandInColumns) {
  const auto characters = [](std::string_view text) {
    return std::ranges::count_if(text,
                                 [](char c) { return (static_cast<unsigned char>(c) >> 6) != 2; });
  };
  std::istringstream lines(run({"recent", "--pages", "40"}));
  std::set<std::ptrdiff_t> lengths;
  std::set<std::ptrdiff_t> seeders;
  bool hasWide = false;
  for (std::string line; std::getline(lines, line);) {
    lengths.insert(characters(line));
    seeders.insert(characters(line.substr(0, line.rfind("  up "))));
    hasWide = hasWide || characters(line) != std::ssize(line);
  }
  EXPECT_EQ(lengths.size(), 1U) << testing::PrintToString(lengths);
  EXPECT_EQ(seeders.size(), 1U) << testing::PrintToString(seeders);
  EXPECT_TRUE(hasWide) << "no name of these tells characters from bytes";
}

TEST_F(CliListsTest, SaysWhyNoRowCame) {
  struct Case {
    FaultKind fault;
    int status;
    const char* words;
  };
  for (const Case& one : {Case{FaultKind::Close, 1, "127.0.0.1 broke the connection off.\n"},
                          Case{FaultKind::Error500, 1, "answered with an error (500).\n"},
                          Case{FaultKind::InvalidUtf8, 1, "The answer cannot be read. The page"},
                          Case{FaultKind::TrFlood, 0, ": No torrents. The page has "}}) {
    site_.setFault("/", Fault{one.fault, {}, 0});
    const std::string text = errors({"search", "the"});
    EXPECT_EQ(status_, one.status) << text;
    EXPECT_NE(text.find(one.words), std::string::npos) << text;
    EXPECT_EQ(std::ranges::count(text, '\n'), 1) << text;
    if (one.status != 0) {
      for (const auto& command : std::vector<std::vector<std::string>>{
               {"favourites"}, {"details", "1"}, {"send", "1", "--page", "0"}, {"top"}}) {
        EXPECT_NE(errors(command).find(one.words), std::string::npos) << command.front();
        EXPECT_EQ(status_, 1) << command.front();
        EXPECT_EQ(run(command), "");
      }
    }
  }
}

TEST_F(CliListsTest, SaysThatTheSiteMovedOrAsksForALogin) {
  const test::RawServer server([&](const test::RecordedRequest& request) -> test::RawReply {
    if (request.target == "/top/all") {
      return test::RawServer::response(
          302, "", {"Location: http://localhost:" + std::to_string(site_.port()) + "/settings"});
    }
    return request.target == "/login" || request.target == "/search/a/0/99/0"
               ? test::RawServer::response(200, "<input type=\"password\">")
               : test::RawServer::response(302, "", {"Location: /login"});
  });
  siteHost_ = server.hostAndPort();
  // A form alone stands in the head of every page of some sites.
  EXPECT_EQ(errors({"search", "a"}),
            "veltramoor-cli: No torrents. The page lists nothing and has a login form: perhaps you "
            "are signed out.\n");
  EXPECT_EQ(status_, 0);
  EXPECT_EQ(errors({"recent"}), "veltramoor-cli: The site asks you to sign in.\n");
  EXPECT_EQ(status_, 1);
  EXPECT_EQ(errors({"top", "--json"}),
            "veltramoor-cli: The site has moved: localhost answered in its place.\n");
  EXPECT_EQ(status_, 1);
}

TEST_F(CliListsTest, PrintsEveryPageUpToTheEndOrTheFailure) {
  EXPECT_EQ(rows({"search", "the", "--pages", "3"}), 90U);
  EXPECT_EQ(rows({"top"}), 100U);
  const std::size_t all = site_.catalogue().find({.words = "the"}).size();
  asked();
  EXPECT_EQ(rows({"search", "the", "--pages", "1000"}), all);
  EXPECT_EQ(asked().size(), all / 30 + 1) << "a short page is the last";
  const std::string text = run({"top", "--category", "200"});
  EXPECT_EQ(std::ranges::count(text, '\n'), 100);
  EXPECT_TRUE(text.starts_with("  1   ")) << text.substr(0, 80);

  site_.setFault("/search/the/1", Fault{FaultKind::Close, {}, 0});
  EXPECT_EQ(rows({"search", "the", "--pages", "3"}), 30U) << "what came is not lost";
  EXPECT_EQ(status_, 1);
  EXPECT_EQ(errors({"search", "the", "--pages", "3"}),
            "veltramoor-cli: Page 1 did not come. 127.0.0.1 broke the connection off.\n");
  for (const auto& wrong : std::vector<std::vector<std::string>>{{"search"},
                                                                 {"recent", "--order", "3"},
                                                                 {"recent", "--sort", "up"},
                                                                 {"search", "a", "--category", "1"},
                                                                 {"search", "a", "--pages", "0"},
                                                                 {"top", "--pages", "2"},
                                                                 {"top", "--order", "5"},
                                                                 {"uploads", "--category", "0"},
                                                                 {"history", "--delete", "0"}}) {
    run(wrong);
    EXPECT_EQ(status_, 2) << testing::PrintToString(wrong);
  }
}

TEST_F(CliListsTest, UploadsAreThoseOfTheSession) {
  EXPECT_EQ(rows({"uploads"}), 0U);
  EXPECT_EQ(status_, 0);
  EXPECT_EQ(asked(), std::vector<std::string>{"/user/Anonymous/0/99"});
  const Accounts accounts(DemoSiteOptions().seed);
  const DemoAccount* demo = Accounts::withPassword("demo", "demo");
  ASSERT_NE(demo, nullptr);
  {
    CookieStorage cookies(defaultStateFile());
    cookies.insert({.name = "uid", .value = std::string(demo->uid), .domain = "127.0.0.1"});
    cookies.insert({.name = "session", .value = accounts.sessionOf(*demo), .domain = "127.0.0.1"});
    cookies.saveIfChanged();
  }
  EXPECT_GT(rows({"uploads"}), 0U);
  EXPECT_EQ(asked(), (std::vector<std::string>{"/settings", "/user/demo/0/99"}));
  site_.expireSessions();
  EXPECT_EQ(rows({"uploads"}), 0U);
  EXPECT_EQ(asked().back(), "/user/Anonymous/0/99");
  site_.setFault("/settings", Fault{FaultKind::Close, {}, 0});
  EXPECT_EQ(errors({"uploads"}), "veltramoor-cli: 127.0.0.1 broke the connection off.\n");
  EXPECT_EQ(status_, 1);
}

TEST_F(CliListsTest, DeletesFromTheHistoryByItsRow) {
  Preferences(defaultStateFile()).setArray("Veltramoor_torrentHistory", {"a", "b", "c"});
  EXPECT_EQ(run({"history", "--delete", "1"}), "Deleted c\n");
  EXPECT_EQ(run({"history", "--delete", "2", "--json"}), "{\"deleted\":\"a\"}\n");
  EXPECT_EQ(run({"history"}), "b\n");
  run({"history", "--delete", "2"});
  EXPECT_EQ(status_, 2);
}

}  // namespace
}  // namespace veltramoor
