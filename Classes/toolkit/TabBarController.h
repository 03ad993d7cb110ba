// Screens behind tabs.
#pragma once

#include <memory>
#include <vector>

#include "toolkit/NavigationController.h"

namespace veltramoor {

/// Told about each choice of a tab by the person, after the screen has been selected.
class TabBarControllerDelegate {
 public:
  virtual ~TabBarControllerDelegate() = default;
  virtual void didSelectViewController(ViewController* controller) = 0;
};

/// The root of the "More" stack: the tabs that do not fit the bar.
class MoreListController : public veltramoor::ViewController {
  Q_OBJECT
  Q_PROPERTY(veltramoor::ViewControllerStack* overflow READ overflow CONSTANT)

 public:
  MoreListController();

  [[nodiscard]] ViewControllerStack* overflow() { return &overflow_; }
  /// The person's choice of the row `row`.
  Q_INVOKABLE void didSelectRowAtIndexPath(int row);

 private:
  ViewControllerStack overflow_;
};

/// Holds the screens of a tab bar in tab order. The bar has five slots on a phone and eight on a
/// tablet; screens that do not fit are reached through the "More" stack, whose own tab is the bar's
/// last slot. Each screen is drawn when it is first selected and kept from then on.
class TabBarController : public veltramoor::ViewController {
  Q_OBJECT
  Q_PROPERTY(veltramoor::ViewControllerStack* bar READ bar CONSTANT)
  Q_PROPERTY(veltramoor::ViewControllerStack* screens READ screens CONSTANT)
  Q_PROPERTY(int selectedSlot READ selectedSlot NOTIFY selectionChanged)
  Q_PROPERTY(veltramoor::ViewController* selectedViewController READ selectedViewController NOTIFY
                 selectionChanged)
  Q_PROPERTY(veltramoor::TabBarItem* overflowItem READ overflowItem NOTIFY selectionChanged)
  Q_PROPERTY(double tabBarHeight READ tabBarHeight CONSTANT)

 public:
  static constexpr int kPhoneSlots = 5;
  static constexpr int kPadSlots = 8;
  /// `selectedIndex` while the "More" list is on show.
  static constexpr int kMoreIndex = 0x7fffffff;

  TabBarController();
  ~TabBarController() override;

  /// At least one; the first becomes the selected one.
  void setViewControllers(std::vector<std::shared_ptr<ViewController>> controllers);
  [[nodiscard]] const std::vector<std::shared_ptr<ViewController>>& viewControllers() const {
    return viewControllers_;
  }
  [[nodiscard]] NavigationController* moreNavigationController() { return more_.get(); }
  /// Not owned; null for none.
  void setDelegate(TabBarControllerDelegate* delegate) { delegate_ = delegate; }

  [[nodiscard]] ViewController* selectedViewController() const { return selected_; }
  [[nodiscard]] int selectedIndex() const;
  /// Selects by program; an index that no screen has changes nothing.
  void setSelectedIndex(std::uint64_t index);

  /// What the bar shows, "More" included.
  [[nodiscard]] ViewControllerStack* bar() { return &bar_; }
  /// Every screen that can be selected, the "More" stack last.
  [[nodiscard]] ViewControllerStack* screens() { return &screens_; }
  [[nodiscard]] int selectedSlot() const;
  /// Of the selected screen when it was chosen from the "More" list; else null.
  [[nodiscard]] TabBarItem* overflowItem() const;
  /// Where the selected screen has nothing to go back to, one from the "More" list leads back
  /// there.
  bool escape() override;
  bool perform(KeyCommand command) override {
    return selected_ != nullptr && selected_->perform(command);
  }
  /// The person's tap on a slot of the bar. On the selected one it leads back to the tab's first
  /// screen.
  Q_INVOKABLE void didSelectSlot(int slot);
  /// The person's choice of a screen, wherever it stands.
  void choose(ViewController* controller);

  /// Whether the person can choose tabs, "More" included.
  void setTabsEnabled(bool enabled);

  /// Height of the drawn bar in points; 0 while there is only one screen and so no bar.
  [[nodiscard]] double tabBarHeight() const { return viewControllers_.size() > 1 ? 49 : 0; }

  void viewWillAppear() override;
  void viewDidAppear() override;
  void viewWillDisappear() override;
  [[nodiscard]] bool isVisible() const { return visible_; }
  [[nodiscard]] bool hasBackgroundWork() const override;

 signals:
  void selectionChanged();

 private:
  void fillBar();
  void select(ViewController* controller);

  std::vector<std::shared_ptr<ViewController>> viewControllers_;
  std::shared_ptr<MoreListController> moreList_;
  std::shared_ptr<NavigationController> more_;
  ViewControllerStack bar_;
  ViewControllerStack screens_;
  ViewController* selected_ = nullptr;
  TabBarControllerDelegate* delegate_ = nullptr;
  bool visible_ = false;
  bool selecting_ = false;
};

}  // namespace veltramoor
