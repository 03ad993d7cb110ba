#include "shell/LogoutViewController.h"

#include "PreferencesKeys.h"
#include "platform/Preferences.h"
#include "toolkit/TabBarController.h"

namespace veltramoor {

LogoutViewController::LogoutViewController(std::function<void()> logout)
    : ViewController(QStringLiteral("Logout.qml")), logout_(std::move(logout)) {
  setTitle(tr("Logout"));
  tabBarItem()->set(tr("Logout"), QStringLiteral("tabbar-logout.png"), 0);
}

void LogoutViewController::viewWillAppear() {
  // Also when nobody chose this tab but the store did: one start that logs out is enough.
  Preferences::sharedInstance().setNumber(PreferencesKeys::tab, 0);
  Preferences::sharedInstance().synchronize();
  if (TabBarController* tabs = tabBarController()) {
    tabs->setSelectedIndex(0);
    tabs->moreNavigationController()->popToRootViewController();
  }
  logout_();
}

}  // namespace veltramoor
