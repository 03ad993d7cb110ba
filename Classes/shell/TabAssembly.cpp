#include "shell/TabAssembly.h"

#include "lists/AllListViewController.h"
#include "shell/LogoutViewController.h"
#include "toolkit/NavigationController.h"

namespace veltramoor {
namespace {

std::shared_ptr<NavigationController> inBlackStack(std::shared_ptr<ViewController> screen) {
  auto stack = std::make_shared<NavigationController>(std::move(screen));
  stack->setBarStyle(NavigationController::BarStyle::Black);
  return stack;
}

}  // namespace

std::vector<std::shared_ptr<ViewController>> assembleTabs(std::function<void()> logout) {
  const auto recents = std::make_shared<AllListViewController>(TableViewStyle::Plain);
  return {
      inBlackStack(recents),
      inBlackStack(std::make_shared<LogoutViewController>(std::move(logout))),
  };
}

}  // namespace veltramoor
