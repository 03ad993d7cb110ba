#include "shell/LoginViewController.h"

#include "PreferencesKeys.h"
#include "platform/Alerts.h"
#include "platform/Preferences.h"
#include "shell/overlay/SynchronousRequest.h"
#include "site/FetchPageLoginCheck.h"
#include "site/FetchPageQuickLoginCheck.h"
#include "site/FetchPageSignIn.h"
#include "toolkit/Device.h"

namespace veltramoor {
namespace {

const QRectF kDonateFrame(80, 425, 160, 50);
constexpr int kIndicatorOffset = 150;
constexpr int kPlainAlert = 0;
constexpr int kGoAlert = 1;
constexpr double kFiveInchHeight = 568;

QString stored(std::string_view key) {
  return QString::fromStdString(Preferences::sharedInstance().string(key).value_or(""));
}

/// False when it was refused and the old value stands.
bool store(std::string_view key, std::string_view value) {
  const bool stored = Preferences::sharedInstance().setString(key, value);
  Preferences::sharedInstance().synchronize();
  return stored;
}

// Everything but "NO" is on, even "".
bool storedSwitch(std::string_view key, bool whenMissing) {
  const auto value = Preferences::sharedInstance().string(key);
  return value ? *value != "NO" : whenMissing;
}

}  // namespace

LoginViewController::LoginViewController(SwitchViews switchViews)
    : ViewController(QStringLiteral("LoginView.qml")),
      switchViews_(std::move(switchViews)),
      donateView_(std::make_shared<DonateViewController>(kDonateFrame)) {
  connect(&automaticLogin_, &Switch::valueChanged, this, &LoginViewController::toggleAutomatic);
  connect(&anonymousLogin_, &Switch::valueChanged, this, &LoginViewController::toggleAnonymous);
  for (TextField* field : {&username_, &password_}) {
    connect(field, &TextField::didBeginEditing, this,
            [this, field] { textBeforeEditing_ = field->text(); });
    connect(field, &TextField::didEndEditing, this,
            [this, field] { textFieldDidEndEditing(*field); });
    connect(field, &TextField::shouldReturn, this,
            [this, field] { textFieldShouldReturn(*field); });
  }
  connect(&site_, &SiteChooser::opened, this, &LoginViewController::endEditing);
  connect(&site_, &SiteChooser::siteChanged, this, &LoginViewController::siteChanged);
  Device* device = &Device::sharedInstance();
  connect(device, &Device::changed, this, &LoginViewController::backgroundChanged);
  connect(device, &Device::keyboardWasShown, this, &LoginViewController::keyboardWasShown);
  connect(device, &Device::keyboardWasHidden, this, &LoginViewController::keyboardWasHidden);
}

LoginViewController::~LoginViewController() = default;

void LoginViewController::viewDidLoad() {
  username_.setText(stored(PreferencesKeys::username));
  password_.setText(stored(PreferencesKeys::password));
  automaticLogin_.setOn(storedSwitch(PreferencesKeys::automaticLogin, false));
  anonymousLogin_.setOn(storedSwitch(PreferencesKeys::anonymousLogin, true));
  toggleAnonymous();
}

void LoginViewController::viewWillDisappear() {
  // What is being typed is kept as if the field had been left.
  endEditing();
}

void LoginViewController::endEditing() {
  username_.resignFirstResponder();
  password_.resignFirstResponder();
}

void LoginViewController::emptyFields() {
  for (TextField* field : {&username_, &password_}) {
    field->setText({});
  }
  emptied_ = true;
}

// The stored account was meant for the other site: it is sent to this one only when somebody types
// it, or presses the button beneath it.
void LoginViewController::siteChanged(bool forGood) {
  emptyFields();
  if (forGood && !anonymousLogin_.isOn() && automaticLogin_.isOn()) {
    automaticLogin_.setOn(false);
    toggleAutomatic();
  }
}

bool LoginViewController::hasBackgroundWork() const { return operationQueue_.operationCount() > 0; }

QString LoginViewController::backgroundImage() const {
  const Device& device = Device::sharedInstance();
  if (device.isPad()) {
    return QStringLiteral("loginBackIPad.png");
  }
  return device.screenSize().height() == kFiveInchHeight ? QStringLiteral("loginBack5.png")
                                                         : QStringLiteral("loginBack.png");
}

void LoginViewController::toggleAutomatic() {
  if (!store(PreferencesKeys::automaticLogin, automaticLogin_.isOn() ? "YES" : "NO")) {
    automaticLogin_.setOn(storedSwitch(PreferencesKeys::automaticLogin, false));
  }
}

void LoginViewController::toggleAnonymous() {
  if (!store(PreferencesKeys::anonymousLogin, anonymousLogin_.isOn() ? "YES" : "NO")) {
    anonymousLogin_.setOn(storedSwitch(PreferencesKeys::anonymousLogin, true));
  }
  const bool anonymous = anonymousLogin_.isOn();
  // Stored before they are emptied, or leaving the field would store the empty text.
  endEditing();
  if (anonymous) {
    emptyFields();
  }
  for (TextField* field : {&username_, &password_}) {
    field->setEnabled(!anonymous);
    field->setAlpha(anonymous ? 0.5 : 1.0);
  }
}

void LoginViewController::tryAutoLogin() {
  if (automaticLogin_.isOn() && !site_.isShown()) {
    login();
  }
}

void LoginViewController::login() {
  if (!loginBtn_.isEnabled()) {
    return;
  }
  loginBtn_.setEnabled(false);
  loading_.begin(view(), tr("Please wait..."), kIndicatorOffset);
  const auto self = sharedController(this);
  if (anonymousLogin_.isOn()) {
    operationQueue_.addOperation(std::make_shared<FetchPageQuickLoginCheck>(
        std::nullopt,
        [self](const std::shared_ptr<HttpRequest>& request) { self->loginResult(request); }));
  } else {
    operationQueue_.addOperation(std::make_shared<FetchPageLoginCheck>(
        Url::parse(settingsAddress()),
        [self](const std::shared_ptr<HttpRequest>& page) { self->doLogin(page); }));
  }
  endEditing();
}

void LoginViewController::doLogin(const std::shared_ptr<HttpRequest>& page) {
  doLogin(page, [self = sharedController(this)](const std::shared_ptr<HttpRequest>& request) {
    self->loginResult(request);
  });
}

void LoginViewController::doLogin(const std::shared_ptr<HttpRequest>& page,
                                  LoginCompletion completion) {
  if (page != nullptr && sessionExists(*page)) {
    triedLoggingIn({true, ""});
    return;
  }
  operationQueue_.addOperation(
      std::make_shared<FetchPageSignIn>(Url::parse(loginAddress()), username_.text().toStdString(),
                                        password_.text().toStdString(), std::move(completion)));
}

void LoginViewController::loginResult(const std::shared_ptr<HttpRequest>& request) {
  triedLoggingIn(judgeLogin(*request));
}

void LoginViewController::endLogin() {
  loginBtn_.setEnabled(true);
  loading_.end();
}

void LoginViewController::triedLoggingIn(const LoginOutcome& outcome) {
  if (outcome.loggedIn) {
    checkNotice();
    return;
  }
  Alerts::showMessage("Login failed.", outcome.message, "Cancel");
  endLogin();
}

void LoginViewController::checkNotice() {
  const auto request = std::make_shared<HttpRequest>(noticeUrl());
  request->setTimeout(kNoticeTimeout);
  // The transport's timeout counts from byte to byte; a server that drips may not hold the person
  // up for longer either.
  switch (requestSynchronously(request, std::chrono::seconds(kNoticeTimeout), GivingUp::No)) {
    case WaitEnd::Finished:
      showNotice(noticeFrom(*request));
      break;
    case WaitEnd::GivenUp:
      showNotice({});
      break;
    case WaitEnd::Closing:
      break;
  }
}

void LoginViewController::showNotice(const Notice& notice) {
  if (notice.kind == Notice::Kind::None) {
    switchView();
    return;
  }
  Alert alert;
  alert.message = notice.message;
  alert.buttons = {"OK"};
  if (notice.kind == Notice::Kind::Stop) {
    alert.title = "Login error";
    alert.tag = kPlainAlert;
    endLogin();
  } else {
    alert.tag = kGoAlert;
    alert.clicked = [self = sharedController(this)](int) { self->switchView(); };
    loading_.end();
  }
  Alerts::show(std::move(alert));
}

void LoginViewController::switchView() {
  // Before the list on the first tab shows the same overlay for its page.
  loading_.end();
  switchViews_();
}

void LoginViewController::textFieldDidEndEditing(const TextField& field) {
  // Fields that were emptied for the person still have their stored texts: to pass through them is
  // not to delete those. Once something is typed it is another account, whose password may be none.
  emptied_ = emptied_ && field.text() == textBeforeEditing_;
  if (emptied_) {
    return;
  }
  // Refused, it stays as it was typed: it is what a sign-in would send, and not another account's.
  store(&field == &username_ ? PreferencesKeys::username : PreferencesKeys::password,
        field.text().toStdString());
}

void LoginViewController::textFieldShouldReturn(TextField& field) {
  if (&field == &username_) {
    password_.becomeFirstResponder();
  } else {
    field.resignFirstResponder();
  }
}

void LoginViewController::toggleInfoView() {
  infoView_.updateVersion();
  infoViewShown_ = true;
  emit infoViewChanged();
}

bool LoginViewController::escape() {
  if (infoViewShown_) {
    returnView();
  } else if (site_.isShown() && site_.canClose()) {
    site_.close();
  } else {
    return false;
  }
  return true;
}

void LoginViewController::returnView() {
  infoViewShown_ = false;
  emit infoViewChanged();
}

void LoginViewController::keyboardWasShown() {
  if (!keyboardVisible_) {
    keyboardVisible_ = true;
    emit contentOffsetChanged();
  }
}

void LoginViewController::keyboardWasHidden() {
  if (keyboardVisible_) {
    keyboardVisible_ = false;
    emit contentOffsetChanged();
  }
}

}  // namespace veltramoor
