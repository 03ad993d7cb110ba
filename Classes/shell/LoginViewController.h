// The first screen: who the person is to the site.
#pragma once

#include <QRectF>
#include <QString>
#include <functional>
#include <memory>

#include "platform/OperationQueue.h"
#include "shell/DonateViewController.h"
#include "shell/InfoView.h"
#include "shell/SiteChooser.h"
#include "shell/overlay/Wait.h"
#include "site/Notice.h"
#include "site/SiteSession.h"
#include "toolkit/Button.h"
#include "toolkit/Switch.h"
#include "toolkit/TextField.h"
#include "toolkit/ViewController.h"

namespace veltramoor {

/// Drives a login: a session check or the anonymous choice, a sign-in when needed, the maker's
/// notice, and then the hand-over to the root controller. What is typed or switched is stored at
/// once, and a switch that the store refuses goes back; the password never leaves the field but for
/// the store and the sign-in form. Main thread only; its requests run one at a time.
class LoginViewController : public veltramoor::ViewController {
  Q_OBJECT
  Q_PROPERTY(veltramoor::TextField* username READ username CONSTANT)
  Q_PROPERTY(veltramoor::TextField* password READ password CONSTANT)
  Q_PROPERTY(veltramoor::Switch* automaticLogin READ automaticLogin CONSTANT)
  Q_PROPERTY(veltramoor::Switch* anonymousLogin READ anonymousLogin CONSTANT)
  Q_PROPERTY(veltramoor::Button* loginBtn READ loginBtn CONSTANT)
  Q_PROPERTY(veltramoor::InfoView* infoView READ infoView CONSTANT)
  Q_PROPERTY(bool infoViewShown READ isInfoViewShown NOTIFY infoViewChanged)
  Q_PROPERTY(veltramoor::DonateViewController* donateView READ donateView CONSTANT)
  Q_PROPERTY(veltramoor::SiteChooser* site READ site CONSTANT)
  Q_PROPERTY(QString backgroundImage READ backgroundImage NOTIFY backgroundChanged)
  Q_PROPERTY(int contentOffset READ contentOffset NOTIFY contentOffsetChanged)

 public:
  using SwitchViews = std::function<void()>;
  using LoginCompletion = std::function<void(std::shared_ptr<HttpRequest>)>;
  /// How far the screen scrolls up for the keyboard, in points.
  static constexpr int kKeyboardOffset = 30;

  /// `switchViews`: what hands over to the root controller.
  explicit LoginViewController(SwitchViews switchViews);
  ~LoginViewController() override;

  void viewDidLoad() override;
  void viewWillDisappear() override;
  [[nodiscard]] bool hasBackgroundWork() const override;

  /// Logs in when the automatic switch is on and there is a site to log in to.
  void tryAutoLogin();
  Q_INVOKABLE void login();
  Q_INVOKABLE void toggleInfoView();
  Q_INVOKABLE void returnView();
  /// Closes the information panel, or the site's where one is set.
  bool escape() override;

  /// Judges the settings page that a session check fetched: an existing session ends the login at
  /// once, else (and always without a page) the fields' texts sign in.
  void doLogin(const std::shared_ptr<HttpRequest>& page);
  void doLogin(const std::shared_ptr<HttpRequest>& page, LoginCompletion completion);
  void loginResult(const std::shared_ptr<HttpRequest>& request);
  void triedLoggingIn(const LoginOutcome& outcome);
  /// Hands over to the root controller.
  void switchView();

  void keyboardWasShown();
  void keyboardWasHidden();

  [[nodiscard]] TextField* username() { return &username_; }
  [[nodiscard]] TextField* password() { return &password_; }
  [[nodiscard]] Switch* automaticLogin() { return &automaticLogin_; }
  [[nodiscard]] Switch* anonymousLogin() { return &anonymousLogin_; }
  [[nodiscard]] Button* loginBtn() { return &loginBtn_; }
  [[nodiscard]] InfoView* infoView() { return &infoView_; }
  [[nodiscard]] bool isInfoViewShown() const { return infoViewShown_; }
  [[nodiscard]] DonateViewController* donateView() { return donateView_.get(); }
  [[nodiscard]] SiteChooser* site() { return &site_; }
  /// File name of the background by the device and the screen's height.
  [[nodiscard]] QString backgroundImage() const;
  [[nodiscard]] int contentOffset() const { return keyboardVisible_ ? kKeyboardOffset : 0; }

 signals:
  void infoViewChanged();
  void backgroundChanged();
  void contentOffsetChanged();

 private:
  void siteChanged(bool forGood);
  void endEditing();
  void emptyFields();
  void toggleAutomatic();
  void toggleAnonymous();
  void textFieldDidEndEditing(const TextField& field);
  void textFieldShouldReturn(TextField& field);
  void checkNotice();
  void showNotice(const Notice& notice);
  void endLogin();

  SwitchViews switchViews_;
  TextField username_;
  TextField password_;
  Switch automaticLogin_;
  Switch anonymousLogin_;
  Button loginBtn_;
  InfoView infoView_;
  SiteChooser site_;
  std::shared_ptr<DonateViewController> donateView_;
  Wait loading_;
  // The text of the field that is being edited, as it was when that began.
  QString textBeforeEditing_;
  // Whether both fields were emptied and nothing has been typed since.
  bool emptied_ = false;
  bool infoViewShown_ = false;
  bool keyboardVisible_ = false;
  // Last, so that its thread is joined before anything else goes.
  OperationQueue operationQueue_{1};
};

}  // namespace veltramoor
