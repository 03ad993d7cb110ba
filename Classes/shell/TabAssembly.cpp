#include "shell/TabAssembly.h"

#include "lists/AllListViewController.h"
#include "lists/FavoriteListViewController.h"
#include "lists/HistoryListViewController.h"
#include "lists/SearchListViewController.h"
#include "lists/Top100ListViewController.h"
#include "lists/UploadListViewController.h"
#include "remote/ServerSettingsViewController.h"
#include "shell/LogoutViewController.h"
#include "toolkit/NavigationController.h"

namespace veltramoor {
namespace {

std::shared_ptr<NavigationController> inBlackStack(std::shared_ptr<ViewController> screen) {
  auto stack = std::make_shared<NavigationController>(std::move(screen));
  stack->setBarStyle(NavigationController::BarStyle::Black);
  return stack;
}

template <typename List>
std::shared_ptr<NavigationController> listInBlackStack() {
  return inBlackStack(std::make_shared<List>(TableViewStyle::Plain));
}

std::shared_ptr<ViewController> remoteSettings() {
  return std::make_shared<ServerSettingsViewController>();
}

}  // namespace

std::vector<std::shared_ptr<ViewController>> assembleTabs(std::function<void()> logout) {
  const auto recents = std::make_shared<AllListViewController>(TableViewStyle::Plain);
  return {
      inBlackStack(recents),
      listInBlackStack<FavoriteListViewController>(),
      listInBlackStack<SearchListViewController>(),
      listInBlackStack<Top100ListViewController>(),
      listInBlackStack<UploadListViewController>(),
      // Bare, without a stack.
      std::make_shared<HistoryListViewController>(TableViewStyle::Plain),
      // The one bar that keeps the default look.
      std::make_shared<NavigationController>(remoteSettings()),
      inBlackStack(std::make_shared<LogoutViewController>(std::move(logout))),
  };
}

}  // namespace veltramoor
