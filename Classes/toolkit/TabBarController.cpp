#include "toolkit/TabBarController.h"

namespace veltramoor {

TabBarController::TabBarController()
    : ViewController(QStringLiteral("TabBarView.qml")),
      more_(std::make_shared<NavigationController>(
          std::make_shared<ViewController>(QStringLiteral("MoreList.qml")))) {
  more_->tabBarItem()->set(QStringLiteral("More"), QStringLiteral("tabbar-more.png"), 0);
  more_->tabBarController_ = this;
}

TabBarController::~TabBarController() {
  for (const auto& controller : viewControllers_) {
    controller->tabBarController_ = nullptr;
  }
}

void TabBarController::setViewControllers(
    std::vector<std::shared_ptr<ViewController>> controllers) {
  viewControllers_ = std::move(controllers);
  for (const auto& controller : viewControllers_) {
    controller->tabBarController_ = this;
  }
}

}  // namespace veltramoor
