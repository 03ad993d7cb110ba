// The terminal's lists: options, pages, whom the cookies sign in.
#include <algorithm>
#include <cstdlib>

#include "demo/Accounts.h"
#include "platform/CookieStorage.h"
#include "platform/Preferences.h"
#include "platform/StateFile.h"
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
    stored.setString("Veltramoor_searchOrderBy", "5");
    stored.setString("Veltramoor_recentCategory", "205");
  }
  struct Case {
    std::vector<std::string> arguments;
    std::vector<std::string> targets;
  };
  for (const Case& one : std::initializer_list<Case>{
           {{"search", "zzzz"}, {"/search/zzzz/0/5/0"}},
           {{"search", "zz zz%", "--order", "Seeders", "--sort", "asc", "--category", "201"},
            {"/search/zz%20zz%25/0/8/201"}},
           {{"search", "zzzz", "--order", "99", "--page", "4", "--pages", "3"},
            {"/search/zzzz/4/99/0"}},
           {{"search", "zzzz"}, {"/search/zzzz/0/5/0"}},
           {{"search", "é"}, {"/search/(null)/0/5/0"}},
           {{"top"}, {"/top/all"}},
           {{"top", "--category", "100"}, {"/top/100"}},
           {{"recent"}, {"/browse/205/0/99/"}},
           {{"recent", "--category", "0", "--page", "1", "--pages", "2"},
            {"/recent/1", "/recent/2"}},
           {{"recent", "--order", "size", "--sort", "asc"}, {"/browse/205/0/6/"}},
           {{"uploads", "--order", "leechers", "--page", "2"}, {"/user/Anonymous/2/9"}}}) {
    run(one.arguments);
    EXPECT_EQ(status_, 0) << testing::PrintToString(one.arguments);
    EXPECT_EQ(asked(), one.targets);
  }
  EXPECT_EQ(Preferences(defaultStateFile()).string("Veltramoor_recentCategory"), "205");
  EXPECT_EQ(Preferences(defaultStateFile()).string("Veltramoor_searchCategory"), std::nullopt);
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
  run({"uploads"});
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
