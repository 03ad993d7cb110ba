#include "shell/SwitchViewController.h"

#include <algorithm>

#include "PreferencesKeys.h"
#include "lists/SearchListViewController.h"
#include "platform/MainThread.h"
#include "platform/Preferences.h"
#include "platform/SiteConfiguration.h"
#include "shell/TabAssembly.h"
#include "site/SiteSession.h"
#include "toolkit/Announcements.h"
#include "toolkit/NavigationController.h"
#include "toolkit/PopupMenu.h"
#include "toolkit/WebCookies.h"

namespace veltramoor {

SwitchViewController::SwitchViewController() : ViewController(QStringLiteral("SwitchView.qml")) {}

SwitchViewController::~SwitchViewController() {
  if (tabBarController_ != nullptr) {
    tabBarController_->setDelegate(nullptr);
  }
}

void SwitchViewController::viewDidLoad() {
  sessionValidated_ = true;
  showLogin_ = false;
  loadLoginView();
  loginViewController_->tryAutoLogin();
}

void SwitchViewController::viewWillDisappear() {
  if (showLogin_) {
    tabBarController_->viewWillDisappear();
  } else {
    loginViewController_->viewWillDisappear();
  }
}

bool SwitchViewController::hasBackgroundWork() const {
  return (loginViewController_ != nullptr && loginViewController_->hasBackgroundWork()) ||
         (tabBarController_ != nullptr && tabBarController_->hasBackgroundWork()) ||
         std::ranges::any_of(formerTabs_,
                             [](const auto& tabs) { return tabs->hasBackgroundWork(); });
}

void SwitchViewController::loadLoginView() {
  // Not kept alive by its own screen: what it calls back is this controller, which outlives it.
  loginViewController_ = std::make_shared<LoginViewController>([this] { switchViews(); });
  loginViewController_->appear();
}

bool SwitchViewController::escape() {
  return showLogin_ ? tabBarController_->escape() : loginViewController_->escape();
}

bool SwitchViewController::perform(KeyCommand command) {
  return showLogin_ &&
         (command == KeyCommand::Search ? showSearch() : tabBarController_->perform(command));
}

bool SwitchViewController::showSearch() {
  for (const auto& tab : tabBarController_->viewControllers()) {
    auto* stack = qobject_cast<NavigationController*>(tab.get());
    if (stack == nullptr || qobject_cast<SearchListViewController*>(
                                stack->stack()->controllers().front().get()) == nullptr) {
      continue;
    }
    if (tabBarController_->selectedViewController() != stack) {
      tabBarController_->choose(stack);
    }
    if (tabBarController_->selectedViewController() != stack) {
      return false;
    }
    stack->popToRootViewController();
    return stack->perform(KeyCommand::Search);
  }
  return false;
}

void SwitchViewController::switchViews() {
  // The screen that asked for the switch is still at work when it is replaced.
  const std::shared_ptr<LoginViewController> leaving = loginViewController_;
  if (!showLogin_) {
    const std::string& site = SiteConfiguration::current().siteHost;
    if (tabBarController_ == nullptr || tabsSite_ != site) {
      dropTabs();
      buildTabs();
      tabsSite_ = site;
    }
    leaving->viewWillDisappear();
    showLogin_ = true;
    sessionValidated_ = true;
    emit switched();
    tabBarController_->viewWillAppear();
    if (!showLogin_) {
      return;  // The remembered tab was the one that logs out.
    }
    if (tabBarController_->selectedIndex() != 0) {
      // The first list appears whatever tab is selected.
      tabBarController_->viewControllers().front()->appear();
    }
    tabBarController_->viewDidAppear();
    return;
  }
  tabBarController_->viewWillDisappear();
  loadLoginView();
  showLogin_ = false;
  emit switched();
}

void SwitchViewController::dropTabs() {
  std::erase_if(formerTabs_, [](const auto& tabs) { return !tabs->hasBackgroundWork(); });
  if (tabBarController_ != nullptr) {
    tabBarController_->setDelegate(nullptr);
    formerTabs_.push_back(std::move(tabBarController_));
  }
}

void SwitchViewController::buildTabs() {
  tabBarController_ = std::make_shared<TabBarController>();
  tabBarController_->setViewControllers(assembleTabs([this] { logout(); }));
  tabBarController_->setDelegate(this);
  if (const auto tab = Preferences::sharedInstance().number(PreferencesKeys::tab)) {
    tabBarController_->setSelectedIndex(static_cast<std::uint32_t>(*tab));
  }
  tabBarController_->moreNavigationController()->setBarStyle(NavigationController::BarStyle::Black);
}

void SwitchViewController::didSelectViewController(ViewController*) {
  Preferences::sharedInstance().setNumber(PreferencesKeys::tab, tabBarController_->selectedIndex());
  Preferences::sharedInstance().synchronize();
  NavigationController* more = tabBarController_->moreNavigationController();
  more->popToRootViewController();
  more->setNavigationBarHidden(false);
}

void SwitchViewController::logout() {
  deleteSessionCookies();
  // Nor does the next person meet what the last one was about, or hear what was sent.
  PopupMenu::sharedInstance().close();
  Announcements::sharedInstance().clear();
  // Web pages that are still open are signed out as well, and nobody sees the last person's.
  WebCookies::sharedInstance().push();
  for (const auto& tab : tabBarController_->viewControllers()) {
    if (auto* stack = qobject_cast<NavigationController*>(tab.get())) {
      stack->popToRootViewController();
    }
  }
  switchViews();
}

void SwitchViewController::sessionInvalidated() {
  sessionValidated_ = false;
  loginViewController_->doLogin(
      nullptr, [self = sharedController(this)](const std::shared_ptr<HttpRequest>& answer) {
        self->sessionInvalidatedResponse(*answer);
      });
}

void SwitchViewController::sessionInvalidatedResponse(const HttpRequest& answer) {
  sessionValidated_ = !isLoginHeader(answer.result().value_or(""));
  if (!sessionValidated_) {
    MainThread::perform([self = sharedController(this)] {
      // The person may have logged out in the meantime.
      if (self->showLogin_) {
        self->logout();
      }
    });
  }
}

}  // namespace veltramoor
