// What the settings screen stores, and what it does not.
#include <set>

#include "ScreenTest.h"
#include "settings/DisplaySettingsTables.h"
#include "settings/RecentDisplaySettingsViewController.h"

namespace veltramoor {
namespace {

class DisplaySettingsTest : public testing::Test {
 protected:
  DisplaySettingsTest() { Preferences::setSharedInstance(&store_); }
  ~DisplaySettingsTest() override { Preferences::setSharedInstance(nullptr); }

  [[nodiscard]] std::optional<std::string> category() const {
    return store_.string("Veltramoor_recentCategory");
  }

  Preferences store_{std::nullopt};
};

TEST_F(DisplaySettingsTest, EveryCategoryHasACodeOfItsOwn) {
  std::set<std::string_view> codes;
  std::size_t count = 0;
  for (const CategoryGroup& group : categoryTable()) {
    EXPECT_EQ(group.members.front().name, "All");
    for (const SettingChoice& member : group.members) {
      codes.insert(member.code);
      ++count;
    }
  }
  EXPECT_EQ(codes.size(), count);
  EXPECT_EQ(count, 45U);
}

TEST_F(DisplaySettingsTest, OpeningStoresOnlyACategoryAndChoosingStoresAtOnce) {
  RecentDisplaySettingsViewController screen;
  EXPECT_EQ(category(), "0");
  EXPECT_EQ(store_.writeCount(), 1U);
  EXPECT_EQ(screen.order()->selectedSegment(), 0);
  EXPECT_EQ(screen.sort()->selectedSegment(), 0);
  screen.didSelectRow(2, 0);
  EXPECT_EQ(category(), "200");
  screen.didSelectRow(5, 1);
  EXPECT_EQ(category(), "205");
  EXPECT_EQ(screen.members().value(5), QStringLiteral("TV shows"));
  screen.didSelectRow(99, 1);
  EXPECT_EQ(category(), "205");
  screen.order()->choose(2);
  screen.sort()->choose(1);
  EXPECT_EQ(store_.string("Veltramoor_recentOrderBy"), "7");
  EXPECT_EQ(store_.string("Veltramoor_recentSortBy"), "asc");

  // "All" shows date and descending and holds the rest back; what is stored stays.
  screen.didSelectRow(0, 0);
  EXPECT_EQ(screen.order()->selectedSegment(), 0);
  EXPECT_EQ(screen.sort()->selectedSegment(), 0);
  screen.order()->choose(1);
  screen.sort()->choose(1);
  EXPECT_EQ(store_.string("Veltramoor_recentOrderBy"), "7");
  EXPECT_EQ(store_.string("Veltramoor_recentSortBy"), "asc");
  screen.didSelectRow(4, 0);
  screen.order()->choose(1);
  EXPECT_EQ(store_.string("Veltramoor_recentOrderBy"), "5");
}

TEST_F(DisplaySettingsTest, OpensOnWhatIsStored) {
  struct Case {
    const char* category;
    const char* order;
    int group;
    int member;
    int segment;
  };
  for (const Case& one : {Case{"406", "9", 4, 6, 3}, Case{"0", "", 0, 0, 0},
                          Case{"12345", "8", 0, 0, SegmentedControl::kNoSegment}}) {
    store_.setString("Veltramoor_recentCategory", one.category);
    store_.setString("Veltramoor_recentOrderBy", one.order);
    const auto writes = store_.writeCount();
    RecentDisplaySettingsViewController screen;
    EXPECT_EQ(screen.selectedGroup(), one.group);
    EXPECT_EQ(screen.selectedMember(), one.member);
    EXPECT_EQ(screen.order()->selectedSegment(), one.segment);
    EXPECT_EQ(store_.writeCount(), writes) << "opening changes nothing that is stored";
  }
}

}  // namespace
}  // namespace veltramoor
