#include "toolkit/ViewController.h"

#include "toolkit/NavigationController.h"
#include "toolkit/TabBarController.h"

namespace veltramoor {

ViewController::ViewController(QString interfaceFile) : interfaceFile_(std::move(interfaceFile)) {}

void ViewController::setTitle(const QString& title) {
  if (title != title_) {
    title_ = title;
    emit titleChanged();
  }
}

void ViewController::appear() {
  if (!loaded_) {
    loaded_ = true;
    viewDidLoad();
  }
  viewWillLayout();
  viewWillAppear();
}

void ViewController::cancel() {
  if (navigationController_ != nullptr) {
    navigationController_->popViewController();
  }
}

TabBarController* ViewController::tabBarController() const {
  if (tabBarController_ == nullptr && navigationController_ != nullptr) {
    return navigationController_->tabBarController();
  }
  return tabBarController_;
}

bool ViewController::isOnShow() const {
  const NavigationController* stack = navigationController_;
  const TabBarController* tabs = tabBarController();
  return stack == nullptr ||
         (stack->isVisible() && stack->topViewController() == this &&
          (tabs == nullptr || (tabs->isVisible() && tabs->selectedViewController() == stack)));
}

}  // namespace veltramoor
