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
#include "toolkit/TabBarController.h"

namespace veltramoor {
namespace {

std::shared_ptr<NavigationController> inBlackStack(std::shared_ptr<ViewController> screen) {
  auto stack = std::make_shared<NavigationController>(std::move(screen));
  stack->setBarStyle(NavigationController::BarStyle::Black);
  return stack;
}

// A list whose line on a failed send leads to `remote`, the remote settings.
template <typename List>
std::shared_ptr<List> listWith(const std::shared_ptr<NavigationController>& remote) {
  auto list = std::make_shared<List>(TableViewStyle::Plain);
  list->showRemoteSettings = [settings = std::weak_ptr(remote)] {
    const auto screen = settings.lock();
    if (screen != nullptr && screen->tabBarController() != nullptr) {
      screen->popToRootViewController();
      screen->tabBarController()->choose(screen.get());
    }
  };
  return list;
}

std::shared_ptr<ClientWebViewController> remoteInterface(
    ClientWebViewController::OpenedFrom openedFrom) {
  return std::make_shared<ClientWebViewController>(std::nullopt, openedFrom);
}

std::shared_ptr<ViewController> remoteSettings() {
  auto settings = std::make_shared<ServerSettingsViewController>();
  settings->makeTestPage = [](ServerSettingsViewController& opener) {
    auto page = remoteInterface(ClientWebViewController::OpenedFrom::RemoteSettings);
    QObject::connect(page.get(), &ClientWebViewController::testFailed, &opener,
                     &ServerSettingsViewController::diagnose);
    return page;
  };
  return settings;
}

}  // namespace

std::vector<std::shared_ptr<ViewController>> assembleTabs(std::function<void()> logout) {
  // The one bar that keeps the default look.
  const auto remote = std::make_shared<NavigationController>(remoteSettings());
  const auto recents = listWith<AllListViewController>(remote);
  return {
      inBlackStack(recents),
      inBlackStack(listWith<FavoriteListViewController>(remote)),
      inBlackStack(listWith<SearchListViewController>(remote)),
      inBlackStack(listWith<Top100ListViewController>(remote)),
      inBlackStack(listWith<UploadListViewController>(remote)),
      inBlackStack(std::make_shared<ForumWebViewController>(std::nullopt, recents)),
      // Bare, without a stack.
      std::make_shared<HistoryListViewController>(TableViewStyle::Plain),
      inBlackStack(remoteInterface(ClientWebViewController::OpenedFrom::TabBar)),
      remote,
      inBlackStack(std::make_shared<SiteWebViewController>(std::nullopt, recents)),
      inBlackStack(std::make_shared<LogoutViewController>(std::move(logout))),
  };
}

}  // namespace veltramoor
