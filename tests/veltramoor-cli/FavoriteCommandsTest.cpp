// Favourites and filters from the terminal.
#include "veltramoor-cli/CliFixture.h"

namespace veltramoor {
namespace {

class FavoriteCommandsTest : public test::CliFixture {};

TEST_F(FavoriteCommandsTest, AddsListsAndRemovesFilters) {
  run({"filters", "add", "[A-M]$"});
  EXPECT_EQ(status_, 0);
  run({"filters", "add", "e"});
  EXPECT_EQ(run({"filters"}), "  1 [A-M]$\n  2 e\n");
  EXPECT_EQ(json({"filters", "list"})[1], (nlohmann::json{{"regex", "e"}, {"valid", true}}));
  for (const auto& wrong : std::vector<std::vector<std::string>>{{"filters", "add", "a(b"},
                                                                 {"filters", "add"},
                                                                 {"filters", "remove", "3"},
                                                                 {"filters", "remove", "0"},
                                                                 {"filters", "nothing"},
                                                                 {"favourites", "--pages", "0"}}) {
    run(wrong);
    EXPECT_EQ(status_, 2) << testing::PrintToString(wrong);
  }
  EXPECT_EQ(errors({"filters", "add", "a**"}),
            "veltramoor-cli: At character 3: This character cannot stand here. Put a backslash "
            "before it to mean the character.\n");
  run({"filters", "remove", "1"});
  EXPECT_EQ(status_, 0);
  EXPECT_EQ(run({"filters", "list"}), "  1 e\n");
}

TEST_F(FavoriteCommandsTest, ListsWhatPassesOfThePagesAsked) {
  EXPECT_EQ(json({"favourites", "--pages", "2"}), nlohmann::json::array());
  run({"filters", "add", ""});
  EXPECT_EQ(json({"favourites"}).size(), 150U);
  site_.clearLog();
  const nlohmann::json rows = json({"favourites", "--category", "201", "--pages", "1"});
  EXPECT_EQ(site_.log().back().target, "/browse/201/0/3");
  ASSERT_FALSE(rows.empty());
  EXPECT_EQ(rows[0]["type"], "201.png");
  site_.setFault("/recent/3", Fault{FaultKind::Error500, {}, 0});
  EXPECT_EQ(json({"favourites"}).size(), 120U) << "what came is not lost";
  EXPECT_EQ(status_, 1);
  EXPECT_EQ(errors({"favourites"}),
            "veltramoor-cli: 1 of 5 pages did not come. The site answered with an error (500).\n");
}

}  // namespace
}  // namespace veltramoor
