#include "toolkit/TabBarController.h"

#include <algorithm>

#include "toolkit/Device.h"

namespace veltramoor {

MoreListController::MoreListController() : ViewController(QStringLiteral("MoreList.qml")) {
  setTitle(tr("More"));
  tabBarItem()->set(tr("More"), QStringLiteral("tabbar-more.png"), 0);
}

void MoreListController::didSelectRowAtIndexPath(int row) {
  if (row >= 0 && row < overflow_.rowCount() && tabBarController() != nullptr) {
    tabBarController()->choose(overflow_.controllers()[static_cast<std::size_t>(row)].get());
  }
}

TabBarController::TabBarController()
    : ViewController(QStringLiteral("TabBarView.qml")),
      moreList_(std::make_shared<MoreListController>()),
      more_(std::make_shared<NavigationController>(moreList_)) {
  more_->tabBarController_ = this;
  connect(&Device::sharedInstance(), &Device::changed, this, &TabBarController::fillBar);
}

TabBarController::~TabBarController() {
  more_->tabBarController_ = nullptr;
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
  selected_ = viewControllers_.empty() ? nullptr : viewControllers_.front().get();
  std::vector<std::shared_ptr<ViewController>> all = viewControllers_;
  all.push_back(more_);
  screens_.assign(std::move(all));
  fillBar();
}

void TabBarController::fillBar() {
  const std::size_t capacity = Device::sharedInstance().isPad() ? kPadSlots : kPhoneSlots;
  const bool overflows = viewControllers_.size() > capacity;
  const auto end = overflows ? viewControllers_.begin() + static_cast<std::ptrdiff_t>(capacity) - 1
                             : viewControllers_.end();
  std::vector<std::shared_ptr<ViewController>> inBar(viewControllers_.begin(), end);
  if (overflows) {
    inBar.push_back(more_);
  }
  if (inBar == bar_.controllers()) {
    return;
  }
  bar_.assign(std::move(inBar));
  moreList_->overflow()->assign({end, viewControllers_.end()});
  if (!overflows && selected_ == more_.get()) {
    select(viewControllers_.front().get());
  }
  emit selectionChanged();
}

int TabBarController::selectedIndex() const {
  const auto found = std::ranges::find(viewControllers_, selected_,
                                       [](const auto& controller) { return controller.get(); });
  return found == viewControllers_.end() ? kMoreIndex
                                         : static_cast<int>(found - viewControllers_.begin());
}

void TabBarController::setSelectedIndex(std::uint64_t index) {
  if (index < viewControllers_.size()) {
    select(viewControllers_[index].get());
  }
}

TabBarItem* TabBarController::overflowItem() const {
  const bool inBar = std::ranges::any_of(
      bar_.controllers(), [this](const auto& controller) { return controller.get() == selected_; });
  return inBar || selected_ == nullptr ? nullptr : selected_->tabBarItem();
}

int TabBarController::selectedSlot() const {
  const auto& controllers = bar_.controllers();
  const auto found = std::ranges::find(controllers, selected_,
                                       [](const auto& controller) { return controller.get(); });
  // What was chosen from the "More" list stands under its slot.
  return found == controllers.end() ? bar_.count() - 1
                                    : static_cast<int>(found - controllers.begin());
}

bool TabBarController::escape() {
  if (selected_ != nullptr && selected_->escape()) {
    return true;
  }
  if (overflowItem() == nullptr) {
    return false;
  }
  choose(more_.get());
  return true;
}

void TabBarController::didSelectSlot(int slot) {
  if (slot >= 0 && slot < bar_.rowCount()) {
    choose(bar_.controllers()[static_cast<std::size_t>(slot)].get());
  }
}

void TabBarController::choose(ViewController* controller) {
  if (!controller->tabBarItem()->isEnabled()) {
    return;
  }
  if (controller != selected_) {
    select(controller);
  } else if (auto* stack = qobject_cast<NavigationController*>(controller)) {
    stack->popToRootViewController();
  }
  if (delegate_ != nullptr) {
    delegate_->didSelectViewController(selected_);
  }
}

void TabBarController::select(ViewController* controller) {
  if (controller == selected_) {
    return;
  }
  if (visible_ && !selecting_) {
    selected_->viewWillDisappear();
  }
  selected_ = controller;
  if (!visible_ || selecting_) {
    emit selectionChanged();
    return;
  }
  // A screen that appears may itself select another or take the whole bar off the window; only
  // what is still on show in the end appears.
  selecting_ = true;
  ViewController* appeared = nullptr;
  while (visible_ && appeared != selected_) {
    appeared = selected_;
    appeared->appear();
  }
  selecting_ = false;
  emit selectionChanged();
  if (visible_) {
    selected_->viewDidAppear();
  }
}

void TabBarController::setTabsEnabled(bool enabled) {
  for (const auto& controller : viewControllers_) {
    controller->tabBarItem()->setEnabled(enabled);
  }
  more_->tabBarItem()->setEnabled(enabled);
}

void TabBarController::viewWillAppear() {
  visible_ = true;
  selected_->appear();
}

void TabBarController::viewDidAppear() { selected_->viewDidAppear(); }

void TabBarController::viewWillDisappear() {
  if (visible_) {
    visible_ = false;
    if (!selecting_) {
      selected_->viewWillDisappear();
    }
  }
}

bool TabBarController::hasBackgroundWork() const {
  return std::ranges::any_of(
      viewControllers_, [](const auto& controller) { return controller->hasBackgroundWork(); });
}

}  // namespace veltramoor
