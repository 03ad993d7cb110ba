// Screens behind tabs.
#pragma once

#include <memory>
#include <vector>

#include "toolkit/NavigationController.h"

namespace veltramoor {

/// Holds the screens of a tab bar in tab order. Those that do not fit the bar are reached through
/// the "More" stack, whose own tab item is the bar's last slot.
class TabBarController : public ViewController {
  Q_OBJECT

 public:
  TabBarController();
  ~TabBarController() override;

  void setViewControllers(std::vector<std::shared_ptr<ViewController>> controllers);
  [[nodiscard]] const std::vector<std::shared_ptr<ViewController>>& viewControllers() const {
    return viewControllers_;
  }
  [[nodiscard]] NavigationController* moreNavigationController() { return more_.get(); }

  /// Height of the drawn bar in points; 0 while there is only one screen and so no bar.
  [[nodiscard]] double tabBarHeight() const { return viewControllers_.size() > 1 ? 49 : 0; }

 private:
  std::vector<std::shared_ptr<ViewController>> viewControllers_;
  std::shared_ptr<NavigationController> more_;
};

}  // namespace veltramoor
