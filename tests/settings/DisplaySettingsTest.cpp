// What the settings screens store, and what they do not.
#include <QAbstractItemModelTester>
#include <QSignalSpy>
#include <set>

#include "lists/listings/SiteCodes.h"
#include "settings/FavoriteDisplaySettingsViewController.h"
#include "settings/RecentDisplaySettingsViewController.h"
#include "settings/SearchDisplaySettingsViewController.h"
#include "settings/Top100DisplaySettingsViewController.h"
#include "settings/UploadDisplaySettingsViewController.h"
#include "support/FileStore.h"
#include "support/ScreenTest.h"

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

template <typename Screen>
std::shared_ptr<DisplaySettingsViewController> make() {
  static_assert(std::is_same_v<decltype(Screen::sharedInstance()), std::shared_ptr<Screen>>,
                "each screen is shared on its own");
  return std::make_shared<Screen>();
}

struct ScreenCase {
  std::shared_ptr<DisplaySettingsViewController> (*make)();
  const char* title;
  std::string category;
  std::string order;
  std::string sort;
  const char* parts;
};

// Title, keys and parts of each screen; on a fresh install opening it stores the category and
// nothing else, and each choice lands under the screen's own key.
TEST_F(DisplaySettingsTest, EachScreenHasItsOwnKeysAndParts) {
  for (const ScreenCase& one : {
           ScreenCase{make<DisplaySettingsViewController>, "Recents Display Settings", "category",
                      "orderBy", "sortBy",
                      "orderLabel 20,60 orderControl 20,90 sortLabel 20,130 sortControl 20,160 "
                      "categoryPicker 20,210 "},
           ScreenCase{make<RecentDisplaySettingsViewController>, "Recent Settings",
                      "recentCategory", "recentOrderBy", "recentSortBy",
                      "orderLabel 20,60 orderControl 20,90 sortLabel 20,130 sortControl 20,160 "
                      "categoryPicker 20,210 "},
           ScreenCase{make<SearchDisplaySettingsViewController>, "Search Settings",
                      "searchCategory", "searchOrderBy", "searchSortBy",
                      "orderLabel 20,60 orderControl 20,90 sortLabel 20,130 sortControl 20,160 "
                      "categoryPicker 20,210 "},
           ScreenCase{make<Top100DisplaySettingsViewController>, "Top 100 Settings",
                      "top100Category", "top100OrderBy", "top100SortBy", "categoryPicker 20,50 "},
           ScreenCase{make<UploadDisplaySettingsViewController>, "Uploads Settings",
                      "uploadCategory", "uploadOrderBy", "uploadSortBy",
                      "orderLabel 20,60 orderControl 20,90 sortLabel 20,130 sortControl 20,160 "},
           ScreenCase{make<FavoriteDisplaySettingsViewController>, "Favorites Display Settings",
                      "favoriteCategory", "orderBy", "sortBy",
                      "categoryPicker 20,210 favoritesCountLabel 20,420 "
                      "favoritesCountValue 270,420 favoritesCountSlider 20,440 "},
       }) {
    SCOPED_TRACE(one.title);
    Preferences store{std::nullopt};
    Preferences::setSharedInstance(&store);
    const auto stored = [&](const std::string& key) { return store.string("Veltramoor_" + key); };
    const auto screen = one.make();
    EXPECT_EQ(store.writeCount(), 1U);
    EXPECT_EQ(stored(one.category), "0");
    EXPECT_EQ(screen->title(), QLatin1String(one.title));
    const QAbstractItemModelTester tester(screen->infoView(),
                                          QAbstractItemModelTester::FailureReportingMode::Warning);
    QString parts;
    for (int i = 0; i < screen->infoView()->count(); ++i) {
      const DisplaySettingsPart* part = screen->infoView()->at(i);
      parts += QStringLiteral("%1 %2,%3 ")
                   .arg(part->name())
                   .arg(part->frame().x())
                   .arg(part->frame().y());
    }
    EXPECT_EQ(parts, QLatin1String(one.parts));
    EXPECT_EQ(screen->order()->selectedSegment(), 0);
    EXPECT_EQ(screen->sort()->selectedSegment(), 0);
    screen->didSelectRow(4, 0);
    screen->didSelectRow(6, 1);
    screen->order()->choose(2);
    screen->sort()->choose(1);
    EXPECT_EQ(stored(one.category), "406");
    EXPECT_EQ(stored(one.order), "7");
    EXPECT_EQ(stored(one.sort), "asc");
    const auto writes = store.writeCount();
    const auto again = one.make();
    EXPECT_EQ(store.writeCount(), writes) << "what is stored stays as it is";
    EXPECT_EQ(again->selectedGroup(), 4);
    EXPECT_EQ(again->selectedMember(), 6);
    EXPECT_EQ(again->order()->selectedSegment(), 2);
    EXPECT_EQ(again->sort()->selectedSegment(), 1);
    Preferences::setSharedInstance(&store_);
  }
}

TEST_F(DisplaySettingsTest, TakingAwayAPartThatIsNotThereChangesNothing) {
  DisplaySettingsViewController screen;
  screen.infoView()->remove(5);
  screen.infoView()->remove(-1);
  EXPECT_EQ(screen.infoView()->count(), 5);
  EXPECT_EQ(screen.infoView()->at(5), nullptr);
}

TEST_F(DisplaySettingsTest, ChoosingStoresAtOnceAndTheGroupAllHoldsTheRestBack) {
  RecentDisplaySettingsViewController screen;
  EXPECT_EQ(screen.order()->enabledSegments(), QList<bool>(4, true)) << "not before it is chosen";
  screen.didSelectRow(2, 0);
  EXPECT_EQ(category(), "200");
  const QSignalSpy newMembers(&screen, &DisplaySettingsViewController::membersChanged);
  screen.didSelectRow(5, 1);
  EXPECT_EQ(category(), "205");
  EXPECT_EQ(screen.members().value(5), QStringLiteral("TV shows"));
  screen.didSelectRow(2, 0);
  EXPECT_EQ(category(), "200");
  EXPECT_EQ(newMembers.count(), 0) << "the group is the same";
  screen.didSelectRow(5, 1);
  for (const auto& [row, component] : {std::pair(99, 1), {-1, 1}, {7, 0}, {-1, 0}}) {
    screen.didSelectRow(row, component);
    EXPECT_EQ(category(), "205");
  }
  screen.order()->choose(2);
  screen.sort()->choose(1);
  EXPECT_EQ(store_.string("Veltramoor_recentOrderBy"), "7");
  EXPECT_EQ(store_.string("Veltramoor_recentSortBy"), "asc");

  // "All" shows date and descending and holds the rest back; what is stored stays.
  screen.didSelectRow(0, 0);
  EXPECT_EQ(newMembers.count(), 1);
  EXPECT_EQ(screen.order()->selectedSegment(), 0);
  EXPECT_EQ(screen.sort()->selectedSegment(), 0);
  EXPECT_EQ(screen.order()->enabledSegments(), (QList<bool>{true, false, false, false}));
  EXPECT_EQ(screen.sort()->enabledSegments(), (QList<bool>{true, false}));
  screen.order()->choose(1);
  screen.sort()->choose(1);
  EXPECT_EQ(store_.string("Veltramoor_recentOrderBy"), "7");
  EXPECT_EQ(store_.string("Veltramoor_recentSortBy"), "asc");
  EXPECT_FALSE(screen.remark().isEmpty()) << "and says why";
  screen.didSelectRow(4, 0);
  EXPECT_EQ(screen.order()->selectedSegment(), 2) << "what is stored is shown again";
  EXPECT_EQ(screen.sort()->selectedSegment(), 1);
  EXPECT_EQ(screen.remark(), QString());
  screen.order()->choose(1);
  EXPECT_EQ(store_.string("Veltramoor_recentOrderBy"), "5");
}

TEST_F(DisplaySettingsTest, OpensOnWhatIsStored) {
  struct Case {
    const char* category;
    const char* order;
    const char* sort;
    int group;
    int member;
    int orderSegment;
    int sortSegment;
    qsizetype members;
  };
  constexpr int kNone = SegmentedControl::kNoSegment;
  constexpr int kNoRow = DisplaySettingsViewController::kNoRow;
  for (const Case& one : {Case{"406", "9", "asc", 4, 6, 3, 1, 8}, Case{"0", "", "", 0, 0, 0, 0, 1},
                          Case{"12345", "8", "up", kNoRow, kNoRow, kNone, kNone, 0},
                          Case{"All", "Date", "Desc", kNoRow, kNoRow, kNone, kNone, 0}}) {
    store_.setString("Veltramoor_recentCategory", one.category);
    store_.setString("Veltramoor_recentOrderBy", one.order);
    store_.setString("Veltramoor_recentSortBy", one.sort);
    const auto writes = store_.writeCount();
    RecentDisplaySettingsViewController screen;
    EXPECT_EQ(screen.selectedGroup(), one.group);
    EXPECT_EQ(screen.selectedMember(), one.member);
    EXPECT_EQ(screen.members().size(), one.members);
    EXPECT_EQ(screen.order()->selectedSegment(), one.orderSegment);
    EXPECT_EQ(screen.sort()->selectedSegment(), one.sortSegment);
    EXPECT_EQ(store_.writeCount(), writes) << "opening changes nothing that is stored";
    screen.didSelectRow(0, 1);
    EXPECT_EQ(store_.string("Veltramoor_recentCategory") == one.category, one.members != 8)
        << "a group comes first";
  }
  store_.setString("Veltramoor_recentCategory", "");
  const RecentDisplaySettingsViewController screen;
  EXPECT_EQ(category(), "0") << "empty is as good as absent";
}

TEST_F(DisplaySettingsTest, WhatTheStoreRefusesIsTakenBack) {
  test::FileStore store;
  RecentDisplaySettingsViewController screen;
  FavoriteDisplaySettingsViewController favorites;
  screen.didSelectRow(2, 0);
  screen.didSelectRow(5, 1);
  screen.order()->choose(2);
  screen.sort()->choose(1);
  favorites.favoritesCountSlider()->moveTo(12);
  favorites.favoritesCountSlider()->release();
  QList<int> rows;
  QObject::connect(&screen, &DisplaySettingsViewController::pickerChanged,
                   [&] { rows.append(screen.selectedMember()); });
  {
    const test::FullDisk fullDisk;
    screen.didSelectRow(3, 1);
    EXPECT_EQ(rows, (QList<int>{3, 5})) << "there and back, for a wheel that has turned already";
    screen.didSelectRow(4, 0);
    screen.didSelectRow(0, 0);
    screen.order()->choose(1);
    screen.sort()->choose(0);
    favorites.favoritesCountSlider()->moveTo(30);
    favorites.favoritesCountSlider()->release();
  }
  EXPECT_EQ(screen.selectedGroup(), 2);
  EXPECT_EQ(screen.selectedMember(), 5);
  EXPECT_EQ(screen.members().value(5), QStringLiteral("TV shows"));
  EXPECT_EQ(screen.order()->selectedSegment(), 2);
  EXPECT_EQ(screen.sort()->selectedSegment(), 1);
  EXPECT_EQ(screen.sort()->enabledSegments(), (QList<bool>{true, true}));
  EXPECT_EQ(favorites.favoritesCountSlider()->value(), 12);
  EXPECT_EQ(favorites.favoritesCountValue()->text(), QStringLiteral("12"));
  EXPECT_EQ(store->string("Veltramoor_recentCategory"), "205");
}

TEST_F(DisplaySettingsTest, TheNumberOfPagesIsStoredWhenTheSliderIsLetGo) {
  const auto stored = [&] { return store_.string("Veltramoor_favoritesCount"); };
  struct Case {
    const char* stored;
    const char* label;
    double value;
  };
  for (const Case& one : {Case{"", "5", 5}, Case{"23", "23", 23}, Case{"3", "3", 5},
                          Case{"999", "999", 50}, Case{"nan", "nan", 5}, Case{"many", "many", 5}}) {
    store_.setString("Veltramoor_favoritesCount", one.stored);
    FavoriteDisplaySettingsViewController screen;
    EXPECT_EQ(screen.favoritesCountValue()->text(), QLatin1String(one.label));
    EXPECT_EQ(screen.favoritesCountSlider()->value(), one.value);
    EXPECT_EQ(stored(), one.stored);
  }
  FavoriteDisplaySettingsViewController screen;
  for (const auto& [value, text] :
       {std::pair(12.6, "13"), {12.4, "12"}, {50.0, "50"}, {4.0, "5"}}) {
    const auto before = stored();
    screen.favoritesCountSlider()->moveTo(value);
    EXPECT_EQ(screen.favoritesCountValue()->text(), QLatin1String(text));
    EXPECT_EQ(stored(), before) << "dragging alone stores nothing";
    screen.favoritesCountSlider()->release();
    EXPECT_EQ(stored(), text);
  }
}

}  // namespace
}  // namespace veltramoor
