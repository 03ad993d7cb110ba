// The settings screens in the real window, by touch, by keys and by wheel.
#include <QAccessible>
#include <QWheelEvent>

#include "settings/FavoriteDisplaySettingsViewController.h"
#include "settings/RecentDisplaySettingsViewController.h"
#include "settings/SearchDisplaySettingsViewController.h"
#include "settings/Top100DisplaySettingsViewController.h"
#include "settings/UploadDisplaySettingsViewController.h"
#include "support/Application.h"
#include "support/ScreenTest.h"

namespace veltramoor {
namespace {

using test::Application;
using test::itemNamed;
using test::waitFor;

class SettingsScreensTest : public test::ScreenTest {
 public:
  // A screen pushed onto another, as a list does it.
  template <typename Screen>
  std::shared_ptr<Screen> open() {
    const auto screen = std::make_shared<Screen>();
    stack_->pushViewController(screen);
    EXPECT_TRUE(app_.waitForItem("displaySettings"));
    return screen;
  }
  void expectClosed() {
    EXPECT_TRUE(waitFor([&] { return app_.item("displaySettings") == nullptr; }));
    EXPECT_EQ(stack_->depth(), 1);
  }
  [[nodiscard]] std::string stored(const char* key) const {
    return store_.string(std::string("Veltramoor_") + key).value_or("");
  }
  [[nodiscard]] int rings() const {
    const auto count = [](const auto& self, QQuickItem* item) -> int {
      int shown = item->property("lit").toBool() && item->isVisible() ? 1 : 0;
      for (QQuickItem* child : item->childItems()) {
        shown += self(self, child);
      }
      return shown;
    };
    return count(count, app_.window()->contentItem());
  }
  void turnWheel(const char* name, QPoint pixels, QPoint angle) const {
    const QPointF at = app_.item(name)->mapToScene({20, 20});
    QWheelEvent event(at, app_.window()->mapToGlobal(at), pixels, angle, Qt::NoButton, {},
                      Qt::NoScrollPhase, false);
    QCoreApplication::sendEvent(app_.window(), &event);
  }
  [[nodiscard]] bool waitForRest(const char* wheel) const {
    const QQuickItem* list = app_.item((std::string(wheel) + "List").c_str());
    return waitFor([&] {
      const int current = list->property("currentIndex").toInt();
      return list->property("contentY").toDouble() == 40 * current - 80;
    });
  }
  // A click on the row that shows `text` of a wheel at rest.
  void tapRow(const char* wheel, const char* text) const {
    QQuickItem* row = nullptr;
    const auto find = [&](const auto& self, QQuickItem* item) -> void {
      if (item->property("text").toString() == QLatin1String(text)) {
        row = item;
      }
      for (QQuickItem* child : item->childItems()) {
        self(self, child);
      }
    };
    EXPECT_TRUE(waitForRest(wheel));
    EXPECT_TRUE(waitFor([&] {
      find(find, app_.item(wheel));
      return row != nullptr;
    })) << text;
    app_.click(row);
  }

  std::shared_ptr<NavigationController> stack_ =
      std::make_shared<NavigationController>(std::make_shared<ViewController>(QString()));
  Application app_{stack_};
};

TEST_F(SettingsScreensTest, EveryScreenShowsItsPartsAndLeavesByEscape) {
  struct Case {
    void (*open)(SettingsScreensTest&);
    const char* title;
    std::vector<const char*> shown;
    std::vector<const char*> hidden;
    const char* first;
  };
  for (const Case& one : {
           Case{[](SettingsScreensTest& t) { t.open<RecentDisplaySettingsViewController>(); },
                "Recent Settings",
                {"orderControl3", "sortControl1", "groupWheel", "memberWheel"},
                {"favoritesCountSlider"},
                "orderControl"},
           Case{[](SettingsScreensTest& t) { t.open<SearchDisplaySettingsViewController>(); },
                "Search Settings",
                {"orderControl3", "sortControl1", "groupWheel"},
                {"favoritesCountSlider"},
                "orderControl"},
           Case{[](SettingsScreensTest& t) { t.open<Top100DisplaySettingsViewController>(); },
                "Top 100 Settings",
                {"groupWheel", "memberWheel"},
                {"orderControl", "orderLabel", "sortControl", "sortLabel"},
                "groupWheel"},
           Case{[](SettingsScreensTest& t) { t.open<UploadDisplaySettingsViewController>(); },
                "Uploads Settings",
                {"orderControl3", "sortControl1"},
                {"groupWheel", "memberWheel"},
                "orderControl"},
           Case{[](SettingsScreensTest& t) { t.open<FavoriteDisplaySettingsViewController>(); },
                "Favorites Display Settings",
                {"groupWheel", "favoritesCountSlider", "favoritesCountValue"},
                {"orderControl", "sortControl"},
                "groupWheel"},
       }) {
    SCOPED_TRACE(one.title);
    app_.click(app_.item("rootScreen"));
    one.open(*this);
    EXPECT_TRUE(app_.item("navigationBar")->isVisible());
    EXPECT_EQ(app_.item("navigationTitle")->property("text").toString(), QLatin1String(one.title));
    for (const char* name : one.shown) {
      EXPECT_TRUE(app_.item(name) != nullptr && app_.item(name)->isVisible()) << name;
    }
    for (const char* name : one.hidden) {
      EXPECT_EQ(app_.item(name), nullptr) << name;
    }
    EXPECT_EQ(app_.focused(), one.first);
    EXPECT_EQ(rings(), 0) << "no key was used";
    app_.type(Qt::Key_Shift);
    EXPECT_EQ(rings(), 1);
    app_.type(Qt::Key_Escape);
    expectClosed();
    one.open(*this);
    app_.item("backButton")->forceActiveFocus();
    app_.type(Qt::Key_Escape);
    expectClosed();
    one.open(*this);
    app_.click(app_.item("backButton"));
    expectClosed();
  }
}

TEST_F(SettingsScreensTest, TopHundredsPickerStandsUnderTheBar) {
  open<Top100DisplaySettingsViewController>();
  EXPECT_EQ(app_.item("groupWheel")->mapToScene({}), QPointF(20, 50));
  // A wheel takes as long to turn as a form to scroll.
  app_.type(Qt::Key_Down);
  EXPECT_EQ(stored("top100Category"), "100");
  ASSERT_TRUE(waitForRest("groupWheel"));
  EXPECT_EQ(app_.item("groupWheel")->mapToScene({}), QPointF(20, 50)) << "nothing needs to scroll";
}

TEST_F(SettingsScreensTest, ChoosesByTouch) {
  open<SearchDisplaySettingsViewController>();
  tapRow("groupWheel", "Video");
  EXPECT_EQ(stored("searchCategory"), "200");
  tapRow("memberWheel", "Movies DVDR");
  EXPECT_EQ(stored("searchCategory"), "202");
  tapRow("groupWheel", "Video");
  EXPECT_EQ(stored("searchCategory"), "202") << "the group is chosen already";
  app_.click(app_.item("orderControl1"));
  app_.click(app_.item("sortControl1"));
  EXPECT_EQ(stored("searchOrderBy"), "5");
  EXPECT_EQ(stored("searchSortBy"), "asc");
  EXPECT_EQ(rings(), 0);
  // A group with as many members as the one before starts at its first, too.
  tapRow("groupWheel", "Audio");
  tapRow("memberWheel", "Music");
  EXPECT_EQ(stored("searchCategory"), "101");
  tapRow("groupWheel", "Applications");
  EXPECT_EQ(stored("searchCategory"), "300");
  tapRow("memberWheel", "Windows");
  EXPECT_EQ(stored("searchCategory"), "301");
}

TEST_F(SettingsScreensTest, AWheelThatWasDraggedChoosesWhereItComesToRest) {
  open<SearchDisplaySettingsViewController>();
  QPoint at = app_.item("groupWheel")->mapToScene({60, 150}).toPoint();
  QTest::mousePress(app_.window(), Qt::LeftButton, {}, at);
  for (int i = 0; i < 12; ++i) {
    at.ry() -= 10;
    QTest::mouseMove(app_.window(), at, 20);
  }
  EXPECT_EQ(stored("searchCategory"), "0") << "not while it is held";
  QTest::mouseRelease(app_.window(), Qt::LeftButton, {}, at);
  EXPECT_TRUE(waitFor([&] { return stored("searchCategory") != "0"; }));
  const int row = app_.item("groupWheelList")->property("currentIndex").toInt();
  EXPECT_EQ(stored("searchCategory"), std::to_string(100 * row));
}

// The screen may be left before the wheel stands still: what was in the band then is the choice.
TEST_F(SettingsScreensTest, AWheelThatStillTurnsWhenItsScreenIsLeftChooses) {
  open<SearchDisplaySettingsViewController>();
  QPoint at = app_.item("groupWheel")->mapToScene({60, 190}).toPoint();
  QTest::mousePress(app_.window(), Qt::LeftButton, {}, at);
  for (int i = 0; i < 12; ++i) {
    at.ry() -= 10;
    QTest::mouseMove(app_.window(), at, 20);
  }
  ASSERT_TRUE(app_.item("groupWheelList")->property("moving").toBool());
  const int row = app_.item("groupWheelList")->property("currentIndex").toInt();
  ASSERT_GT(row, 0);
  app_.type(Qt::Key_Escape);
  expectClosed();
  EXPECT_EQ(stored("searchCategory"), std::to_string(100 * row));
}

TEST_F(SettingsScreensTest, ChoosesByKeys) {
  open<RecentDisplaySettingsViewController>();
  app_.type(Qt::Key_Right);
  EXPECT_EQ(stored("recentOrderBy"), "5");
  app_.type(Qt::Key_Tab);
  EXPECT_EQ(app_.focused(), "sortControl");
  EXPECT_EQ(rings(), 1);
  app_.type(Qt::Key_Right);
  EXPECT_EQ(stored("recentSortBy"), "asc");
  app_.type(Qt::Key_Tab);
  EXPECT_EQ(app_.focused(), "groupWheel");
  struct Case {
    Qt::Key key;
    const char* category;
    const char* focus;
  };
  for (const Case& one :
       {Case{Qt::Key_Up, "0", "groupWheel"}, Case{Qt::Key_End, "600", "groupWheel"},
        Case{Qt::Key_Down, "600", "groupWheel"}, Case{Qt::Key_Home, "0", "groupWheel"},
        Case{Qt::Key_PageDown, "400", "groupWheel"}, Case{Qt::Key_PageUp, "0", "groupWheel"},
        Case{Qt::Key_Down, "100", "groupWheel"}, Case{Qt::Key_Down, "200", "groupWheel"},
        Case{Qt::Key_Right, "200", "memberWheel"}, Case{Qt::Key_End, "299", "memberWheel"},
        Case{Qt::Key_Up, "208", "memberWheel"}, Case{Qt::Key_PageUp, "204", "memberWheel"},
        Case{Qt::Key_Left, "204", "groupWheel"}}) {
    app_.type(one.key);
    EXPECT_EQ(stored("recentCategory"), one.category);
    EXPECT_EQ(app_.focused(), one.focus);
  }
  app_.type(Qt::Key_Home);
  EXPECT_FALSE(app_.item("orderControl1")->isEnabled()) << "held back under All";
  app_.click(app_.item("orderControl2"));
  EXPECT_EQ(stored("recentOrderBy"), "5");
  EXPECT_TRUE(app_.item("settingsRemark")->isVisible());
  app_.type(Qt::Key_Down);
  EXPECT_FALSE(app_.item("settingsRemark")->isVisible());
}

// Many small turns of a touchpad make as many rows as they are long, not as they are many.
TEST_F(SettingsScreensTest, AWheelTurnsByNotchesAndByTheLengthOfATouchpadsTurn) {
  open<RecentDisplaySettingsViewController>();
  turnWheel("groupWheel", {}, {0, -120});
  EXPECT_EQ(stored("recentCategory"), "100");
  for (int i = 0; i < 8; ++i) {
    turnWheel("groupWheel", {}, {0, -15});
  }
  EXPECT_EQ(stored("recentCategory"), "200");
  for (int i = 0; i < 16; ++i) {
    turnWheel("groupWheel", {0, -5}, {0, -40});
  }
  EXPECT_EQ(stored("recentCategory"), "400") << "80 pixels are two rows";
  turnWheel("groupWheel", {0, 39}, {0, 300});
  EXPECT_EQ(stored("recentCategory"), "400");
  turnWheel("groupWheel", {0, 1}, {0, 8});
  EXPECT_EQ(stored("recentCategory"), "300");
}

TEST_F(SettingsScreensTest, AnUnknownCategoryLooksLikeNoneUntilOneIsChosen) {
  store_.setString("Veltramoor_recentCategory", "12345");
  open<RecentDisplaySettingsViewController>();
  EXPECT_FALSE(app_.item("groupWheelBand")->isVisible());
  EXPECT_FALSE(app_.item("memberWheelBand")->isVisible());
  EXPECT_EQ(stored("recentCategory"), "12345");
  tapRow("groupWheel", "All");
  EXPECT_EQ(stored("recentCategory"), "0");
  EXPECT_TRUE(app_.item("groupWheelBand")->isVisible());
  EXPECT_TRUE(app_.item("memberWheelBand")->isVisible());
}

TEST_F(SettingsScreensTest, TheSliderStoresWhatItIsLetGoAt) {
  open<FavoriteDisplaySettingsViewController>();
  QQuickItem* slider = app_.item("favoritesCountSlider");
  const auto label = [&] {
    return app_.item("favoritesCountValue")->property("text").toString().toStdString();
  };
  EXPECT_EQ(label(), "5");
  const QPoint left = slider->mapToScene({14, 22}).toPoint();
  const QPoint right = slider->mapToScene({slider->width() - 14, 22}).toPoint();
  QTest::mousePress(app_.window(), Qt::LeftButton, {}, left);
  QTest::mouseMove(app_.window(), (left + right) / 2);
  EXPECT_EQ(label(), "28");
  EXPECT_EQ(stored("favoritesCount"), "");
  QTest::mouseMove(app_.window(), right);
  EXPECT_EQ(label(), "50");
  QTest::mouseRelease(app_.window(), Qt::LeftButton, {}, right);
  EXPECT_EQ(stored("favoritesCount"), "50");
  EXPECT_EQ(rings(), 0);
  // Let go far from the slider, the drag is taken back; a little beside it counts.
  for (const auto& [below, count] : {std::pair<int, const char*>{200, "50"}, {40, "28"}}) {
    QTest::mousePress(app_.window(), Qt::LeftButton, {}, right);
    QTest::mouseMove(app_.window(), (left + right) / 2);
    EXPECT_EQ(label(), "28");
    QTest::mouseMove(app_.window(), (left + right) / 2 + QPoint(0, below));
    QTest::mouseRelease(app_.window(), Qt::LeftButton, {}, (left + right) / 2 + QPoint(0, below));
    EXPECT_EQ(label(), count);
    EXPECT_EQ(stored("favoritesCount"), count);
  }
  struct Case {
    Qt::Key key;
    const char* count;
  };
  for (const Case& one :
       {Case{Qt::Key_End, "50"}, Case{Qt::Key_Left, "49"}, Case{Qt::Key_Home, "5"},
        Case{Qt::Key_Left, "5"}, Case{Qt::Key_Right, "6"}, Case{Qt::Key_Up, "7"},
        Case{Qt::Key_PageUp, "12"}, Case{Qt::Key_End, "50"}, Case{Qt::Key_PageDown, "45"},
        Case{Qt::Key_Down, "44"}}) {
    app_.type(one.key);
    EXPECT_EQ(stored("favoritesCount"), one.count);
    EXPECT_EQ(label(), one.count);
  }
  turnWheel("favoritesCountSlider", {}, {0, 120});
  EXPECT_EQ(stored("favoritesCount"), "45");
  turnWheel("favoritesCountSlider", {}, {0, -60});
  EXPECT_EQ(stored("favoritesCount"), "45");
}

// The lowest window: what has the keyboard is scrolled into view.
TEST_F(SettingsScreensTest, ALowWindowScrollsToTheSlider) {
  app_.window()->resize(320, 480);
  open<FavoriteDisplaySettingsViewController>();
  QQuickItem* slider = app_.item("favoritesCountSlider");
  EXPECT_TRUE(waitFor([&] { return app_.item("displaySettings")->height() == 480; }));
  EXPECT_GT(slider->mapToScene({0, slider->height()}).y(), 480);
  slider->forceActiveFocus();
  EXPECT_TRUE(waitFor([&] { return slider->mapToScene({0, slider->height()}).y() <= 480; }));
}

TEST_F(SettingsScreensTest, EachSegmentIsAnAccessibleItem) {
  open<UploadDisplaySettingsViewController>();
  QAccessibleInterface* second = QAccessible::queryAccessibleInterface(app_.item("orderControl1"));
  ASSERT_NE(second, nullptr);
  EXPECT_EQ(second->role(), QAccessible::RadioButton);
  EXPECT_EQ(second->text(QAccessible::Name), QStringLiteral("Size"));
  EXPECT_FALSE(second->state().checked);
  second->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
  EXPECT_EQ(stored("uploadOrderBy"), "5");
  EXPECT_TRUE(second->state().checked);
}

}  // namespace
}  // namespace veltramoor
