// The root of every screen: the login screen, or the tabs.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "shell/LoginViewController.h"
#include "toolkit/TabBarController.h"

namespace veltramoor {

/// Shows the login screen or the tab bar, and nothing but `switchViews` changes which. The tabs are
/// built by the first login and kept until a login to another site; every return to the login
/// screen makes a fresh one. Main thread only.
class SwitchViewController : public veltramoor::ViewController, public TabBarControllerDelegate {
  Q_OBJECT
  Q_PROPERTY(bool showLogin READ showLogin NOTIFY switched)
  Q_PROPERTY(
      veltramoor::LoginViewController* loginViewController READ loginViewController NOTIFY switched)
  Q_PROPERTY(veltramoor::TabBarController* tabs READ tabBarController NOTIFY switched)

 public:
  SwitchViewController();
  ~SwitchViewController() override;

  void viewDidLoad() override;
  void viewWillDisappear() override;
  [[nodiscard]] bool hasBackgroundWork() const override;

  /// The tabs are asked, or the login screen, whichever is on show.
  bool escape() override;
  /// A search may begin on any tab; everything else is the tabs' own.
  bool perform(KeyCommand command) override;

  void switchViews();
  /// Deletes the site's cookies and returns to the login screen.
  void logout();
  /// Signs in again in the background with the stored name and password; logs out when the site
  /// answers with its login page all the same.
  void sessionInvalidated();

  void didSelectViewController(ViewController* controller) override;

  /// True while the tabs are on show: the next switch shows the login screen.
  [[nodiscard]] bool showLogin() const { return showLogin_; }
  [[nodiscard]] bool sessionValidated() const { return sessionValidated_; }
  [[nodiscard]] LoginViewController* loginViewController() const {
    return loginViewController_.get();
  }
  /// Null until the first login.
  [[nodiscard]] TabBarController* tabBarController() const { return tabBarController_.get(); }

 signals:
  void switched();

 private:
  void loadLoginView();
  void buildTabs();
  void dropTabs();
  bool showSearch();
  void sessionInvalidatedResponse(const HttpRequest& answer);

  std::shared_ptr<LoginViewController> loginViewController_;
  std::shared_ptr<TabBarController> tabBarController_;
  // The site that the tabs show.
  std::string tabsSite_;
  // Tabs of another site, for as long as something of theirs is under way.
  std::vector<std::shared_ptr<TabBarController>> formerTabs_;
  bool showLogin_ = false;
  bool sessionValidated_ = true;
};

}  // namespace veltramoor
