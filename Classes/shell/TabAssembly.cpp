#include "shell/TabAssembly.h"

#include "lists/AllListViewController.h"
#include "lists/FavoriteListViewController.h"
#include "lists/HistoryListViewController.h"
#include "lists/SearchListViewController.h"
#include "lists/Top100ListViewController.h"
#include "lists/UploadListViewController.h"
#include "remote/screens/ClientWebViewController.h"
#include "remote/screens/ServerSettingsViewController.h"
#include "shell/LogoutViewController.h"
#include "shell/pages/ForumWebViewController.h"
#include "shell/pages/SiteWebViewController.h"
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

std::shared_ptr<ViewController> remoteInterface(ClientWebViewController::OpenedFrom openedFrom) {
  return std::make_shared<ClientWebViewController>(std::nullopt, openedFrom);
}

std::shared_ptr<ViewController> remoteSettings() {
  auto settings = std::make_shared<ServerSettingsViewController>();
  settings->makeTestPage = [](ServerSettingsViewController&) {
    return remoteInterface(ClientWebViewController::OpenedFrom::RemoteSettings);
  };
  return settings;
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
      inBlackStack(std::make_shared<ForumWebViewController>(std::nullopt, recents)),
      // Bare, without a stack.
      std::make_shared<HistoryListViewController>(TableViewStyle::Plain),
      inBlackStack(remoteInterface(ClientWebViewController::OpenedFrom::TabBar)),
      // The one bar that keeps the default look.
      std::make_shared<NavigationController>(remoteSettings()),
      inBlackStack(std::make_shared<SiteWebViewController>(std::nullopt, recents)),
      inBlackStack(std::make_shared<LogoutViewController>(std::move(logout))),
  };
}

}  // namespace veltramoor
