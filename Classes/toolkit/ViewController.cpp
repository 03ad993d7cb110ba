#include "toolkit/ViewController.h"

#include "toolkit/NavigationController.h"

namespace veltramoor {

ViewController::ViewController(QString interfaceFile) : interfaceFile_(std::move(interfaceFile)) {}

void ViewController::setTitle(const QString& title) {
  if (title != title_) {
    title_ = title;
    emit titleChanged();
  }
}

TabBarController* ViewController::tabBarController() const {
  if (tabBarController_ == nullptr && navigationController_ != nullptr) {
    return navigationController_->tabBarController();
  }
  return tabBarController_;
}

}  // namespace veltramoor
