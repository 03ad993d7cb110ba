#include "toolkit/NavigationController.h"

#include <algorithm>

namespace veltramoor {

int ViewControllerStack::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(controllers_.size());
}

QVariant ViewControllerStack::data(const QModelIndex& index, int role) const {
  if (!checkIndex(index, CheckIndexOption::IndexIsValid) || role != ControllerRole) {
    return {};
  }
  return QVariant::fromValue(controllers_[static_cast<std::size_t>(index.row())].get());
}

QHash<int, QByteArray> ViewControllerStack::roleNames() const {
  return {{ControllerRole, "controller"}};
}

void ViewControllerStack::push(std::shared_ptr<ViewController> controller) {
  const int row = rowCount();
  beginInsertRows({}, row, row);
  controllers_.push_back(std::move(controller));
  endInsertRows();
  emit countChanged();
}

std::shared_ptr<ViewController> ViewControllerStack::pop() {
  const int row = rowCount() - 1;
  beginRemoveRows({}, row, row);
  std::shared_ptr<ViewController> removed = std::move(controllers_.back());
  controllers_.pop_back();
  endRemoveRows();
  emit countChanged();
  return removed;
}

void ViewControllerStack::assign(std::vector<std::shared_ptr<ViewController>> controllers) {
  beginResetModel();
  controllers_ = std::move(controllers);
  endResetModel();
  emit countChanged();
}

NavigationController::NavigationController(std::shared_ptr<ViewController> root)
    : ViewController(QStringLiteral("NavigationView.qml")) {
  root->navigationController_ = this;
  stack_.push(std::move(root));
}

NavigationController::~NavigationController() {
  for (const auto& controller : stack_.controllers()) {
    controller->navigationController_ = nullptr;
  }
}

TabBarItem* NavigationController::tabBarItem() {
  return stack_.controllers().front()->tabBarItem();
}

ViewController* NavigationController::topViewController() const {
  return stack_.controllers().back().get();
}

void NavigationController::leaveTop() {
  if (visible_) {
    topViewController()->viewWillDisappear();
  }
}

void NavigationController::showTop() {
  if (visible_) {
    topViewController()->appear();
  }
  emit stackChanged();
  if (visible_) {
    topViewController()->viewDidAppear();
  }
}

void NavigationController::pushViewController(const std::shared_ptr<ViewController>& controller) {
  leaveTop();
  controller->navigationController_ = this;
  if (visible_) {
    controller->appear();
  }
  stack_.push(controller);
  emit stackChanged();
  if (visible_) {
    controller->viewDidAppear();
  }
}

void NavigationController::popViewController() {
  if (depth() < 2) {
    return;
  }
  leaveTop();
  const std::shared_ptr<ViewController> removed = stack_.pop();
  removed->navigationController_ = nullptr;
  showTop();
}

bool NavigationController::escape() {
  if (depth() == 1) {
    return topViewController()->escape();
  }
  topViewController()->cancel();
  return true;
}

void NavigationController::popToRootViewController() {
  if (depth() < 2) {
    return;
  }
  leaveTop();
  std::vector<std::shared_ptr<ViewController>> removed;
  while (depth() > 1) {
    removed.push_back(stack_.pop());
    removed.back()->navigationController_ = nullptr;
  }
  showTop();
}

void NavigationController::setNavigationBarHidden(bool hidden) {
  if (hidden != navigationBarHidden_) {
    navigationBarHidden_ = hidden;
    emit navigationBarHiddenChanged();
  }
}

void NavigationController::viewWillAppear() {
  visible_ = true;
  topViewController()->appear();
}

void NavigationController::viewDidAppear() { topViewController()->viewDidAppear(); }

void NavigationController::viewWillDisappear() {
  visible_ = false;
  topViewController()->viewWillDisappear();
}

bool NavigationController::hasBackgroundWork() const {
  return std::ranges::any_of(
      stack_.controllers(), [](const auto& controller) { return controller->hasBackgroundWork(); });
}

}  // namespace veltramoor
