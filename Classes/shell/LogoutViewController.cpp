#include "shell/LogoutViewController.h"

#include "toolkit/TabBarController.h"

namespace veltramoor {

LogoutViewController::LogoutViewController(std::function<void()> logout)
    : ViewController(QStringLiteral("Logout.qml")), logout_(std::move(logout)) {
  setTitle(tr("Logout"));
  tabBarItem()->set(tr("Logout"), QStringLiteral("tabbar-logout.png"), 0);
}

void LogoutViewController::viewWillAppear() {
  if (TabBarController* tabs = tabBarController()) {
    tabs->setSelectedIndex(0);
    tabs->moreNavigationController()->popToRootViewController();
  }
  logout_();
}

}  // namespace veltramoor
