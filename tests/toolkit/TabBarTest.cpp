// The tab bar and its "More" list, whatever the screens show.
#include "toolkit/TabBarController.h"

#include "shell/LogoutViewController.h"
#include "support/ScreenTest.h"
#include "toolkit/Device.h"
#include "toolkit/NavigationController.h"

namespace veltramoor {
namespace {

// Eleven plain screens.
class TabBarTest : public test::ScreenTest {
 protected:
  class Screen : public ViewController {
   public:
    explicit Screen(int number) : ViewController(QStringLiteral("MoreList.qml")) {
      tabBarItem()->set(QString::number(number), QStringLiteral("tabbar-all.png"), 0);
    }
    void viewWillAppear() override { ++appearances; }
    void viewWillDisappear() override { ++disappearances; }
    int appearances = 0;
    int disappearances = 0;
  };
  class Delegate : public TabBarControllerDelegate {
   public:
    void didSelectViewController(ViewController* controller) override { chosen = controller; }
    ViewController* chosen = nullptr;
  };

  TabBarTest() {
    std::vector<std::shared_ptr<ViewController>> all;
    for (int i = 0; i < 11; ++i) {
      screens_.push_back(std::make_shared<Screen>(i));
      all.push_back(screens_.back());
    }
    Device::sharedInstance().setScreenSize({360, 720});
    tabs_.setViewControllers(all);
    tabs_.setDelegate(&delegate_);
  }
  ~TabBarTest() override { Device::sharedInstance().setScreenSize({320, 480}); }

  std::vector<std::shared_ptr<Screen>> screens_;
  Delegate delegate_;
  TabBarController tabs_;
};

TEST_F(TabBarTest, FiveSlotsOnAPhoneAndEightOnATablet) {
  EXPECT_EQ(tabs_.bar()->count(), 5);
  auto* more =
      qobject_cast<MoreListController*>(tabs_.moreNavigationController()->topViewController());
  ASSERT_NE(more, nullptr);
  EXPECT_EQ(more->overflow()->count(), 7);
  EXPECT_EQ(tabs_.bar()->controllers().back().get(), tabs_.moreNavigationController());
  Device::sharedInstance().setScreenSize({768, 1024});
  EXPECT_EQ(tabs_.bar()->count(), 8);
  EXPECT_EQ(more->overflow()->count(), 4);
  for (const auto& [shorter, count] : {std::pair(599.0, 5), {600.0, 8}}) {
    Device::sharedInstance().setScreenSize({900, shorter});
    EXPECT_EQ(tabs_.bar()->count(), count) << shorter;
  }
  tabs_.setViewControllers({screens_[0], screens_[1]});
  EXPECT_EQ(tabs_.bar()->count(), 2);
  EXPECT_EQ(tabs_.tabBarHeight(), 49);
}

TEST_F(TabBarTest, ScreensAppearAndDisappearOnceEach) {
  tabs_.viewWillAppear();
  EXPECT_EQ(screens_[0]->appearances, 1);
  tabs_.didSelectSlot(2);
  EXPECT_EQ(screens_[0]->disappearances, 1);
  EXPECT_EQ(screens_[2]->appearances, 1);
  EXPECT_EQ(delegate_.chosen, screens_[2].get());
  EXPECT_EQ(tabs_.selectedIndex(), 2);
  EXPECT_EQ(tabs_.selectedSlot(), 2);
  tabs_.didSelectSlot(4);
  EXPECT_EQ(tabs_.selectedIndex(), TabBarController::kMoreIndex);
  EXPECT_EQ(screens_[2]->disappearances, 1);
  auto* more =
      qobject_cast<MoreListController*>(tabs_.moreNavigationController()->topViewController());
  more->didSelectRowAtIndexPath(6);
  EXPECT_EQ(tabs_.selectedIndex(), 10);
  EXPECT_EQ(tabs_.selectedSlot(), 4) << "it stands under \"More\"";
  EXPECT_EQ(screens_[10]->appearances, 1);
  screens_[1]->tabBarItem()->setEnabled(false);
  tabs_.didSelectSlot(1);
  EXPECT_EQ(tabs_.selectedIndex(), 10) << "a disabled tab cannot be chosen";
  tabs_.setSelectedIndex(11);
  EXPECT_EQ(tabs_.selectedIndex(), 10);
}

// A logout empties every stack; of the screens beneath, only what is on show may appear and fetch.
TEST_F(TabBarTest, AHiddenStackChangesWithoutAppearing) {
  const auto stack = std::make_shared<NavigationController>(screens_[0]);
  tabs_.setViewControllers({stack, screens_[1]});
  tabs_.viewWillAppear();
  stack->pushViewController(screens_[2]);
  EXPECT_EQ(screens_[2]->appearances, 1);
  tabs_.didSelectSlot(1);
  EXPECT_EQ(screens_[2]->disappearances, 1);
  stack->popToRootViewController();
  stack->pushViewController(screens_[3]);
  EXPECT_EQ(screens_[0]->appearances, 1);
  EXPECT_EQ(screens_[2]->disappearances, 1);
  EXPECT_EQ(screens_[3]->appearances, 0);
  tabs_.didSelectSlot(0);
  EXPECT_EQ(screens_[3]->appearances, 1);
  stack->popViewController();
  EXPECT_EQ(screens_[3]->disappearances, 1);
  EXPECT_EQ(screens_[0]->appearances, 2);
}

TEST_F(TabBarTest, AScreenThatLogsOutWhileItAppearsLeavesTheFirstTabSelected) {
  int logouts = 0;
  const auto logout = std::make_shared<LogoutViewController>([&] {
    ++logouts;
    tabs_.viewWillDisappear();
  });
  tabs_.setViewControllers({screens_[0], screens_[1], logout});
  tabs_.viewWillAppear();
  tabs_.didSelectSlot(1);
  const int appearances = screens_[0]->appearances;
  tabs_.didSelectSlot(2);
  EXPECT_EQ(logouts, 1);
  EXPECT_EQ(tabs_.selectedIndex(), 0);
  EXPECT_EQ(delegate_.chosen, screens_[0].get());
  EXPECT_EQ(screens_[0]->appearances, appearances) << "the bar is off the window by then";
}

}  // namespace
}  // namespace veltramoor
