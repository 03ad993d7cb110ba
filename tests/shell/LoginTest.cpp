// The login screen without its views: every outcome, what it stores, what the site is sent.
#include <QElapsedTimer>

#include <QTimer>
#include <fstream>
#include "support/ScreenTest.h"

#include "platform/Bundle.h"
#include "platform/CookieStorage.h"
#include "shell/LoginViewController.h"
#include "shell/overlay/LoadingIndicator.h"
#include "site/UserInfo.h"
#include "support/FileStore.h"
#include "support/RawServer.h"
#include "toolkit/Device.h"

namespace veltramoor {
namespace {

using test::waitFor;

class LoginTest : public test::ScreenTest {
 protected:
  LoginTest() { setNoticeHost(site_.host()); }
  ~LoginTest() override {
    if (login_ != nullptr) {
      EXPECT_TRUE(waitFor([this] { return !login_->hasBackgroundWork(); }));
      QCoreApplication::processEvents();
    }
    LoadingIndicator::current().hideLoadingIndicators();
    CookieStorage::sharedInstance().erase({"127.0.0.1", ".127.0.0.1"});
  }

  static void setNoticeHost(const std::string& host) {
    SiteConfiguration configuration = SiteConfiguration::current();
    configuration.noticeHost = host;
    SiteConfiguration::setCurrent(std::move(configuration));
  }
  LoginViewController& load() {
    login_ = std::make_shared<LoginViewController>([this] { ++switches_; });
    login_->appear();
    return *login_;
  }
  // A screen with anonymous off and the account typed in.
  LoginViewController& loadAccount(const QString& name, const QString& password) {
    store_.setString("Veltramoor_anonymousLogin", "NO");
    LoginViewController& login = load();
    login.username()->setText(name);
    login.password()->setText(password);
    return login;
  }
  // Logs in and waits for its end: the hand-over or an alert.
  void logIn() {
    login_->login();
    EXPECT_FALSE(login_->loginBtn()->isEnabled());
    EXPECT_EQ(LoadingIndicator::current().shownText(), QStringLiteral("Please wait..."));
    EXPECT_TRUE(waitFor([this] { return switches_ > 0 || delegate_.alertView()->isVisible(); }));
  }
  [[nodiscard]] QString alert() {
    return delegate_.alertView()->title() + "|" + delegate_.alertView()->message() + "|" +
           delegate_.alertView()->buttons().join(',');
  }
  [[nodiscard]] std::vector<std::string> targets() const {
    std::vector<std::string> lines;
    for (const DemoRequest& request : site_.log()) {
      const std::string path = request.target.substr(0, request.target.find('?'));
      lines.push_back(request.method + " " + path);
    }
    return lines;
  }

  VeltramoorAppDelegate delegate_;
  std::shared_ptr<LoginViewController> login_;
  int switches_ = 0;
};

TEST_F(LoginTest, AFreshInstallIsAnonymousAndNotAutomatic) {
  LoginViewController& login = load();
  EXPECT_TRUE(login.anonymousLogin()->isOn());
  EXPECT_FALSE(login.automaticLogin()->isOn());
  EXPECT_FALSE(login.username()->isEnabled());
  EXPECT_DOUBLE_EQ(login.password()->alpha(), 0.5);
  EXPECT_EQ(store_.string("Veltramoor_anonymousLogin"), "YES");
  EXPECT_EQ(store_.string("Veltramoor_automaticLogin"), std::nullopt);
  login.tryAutoLogin();
  EXPECT_FALSE(login.hasBackgroundWork());
}

TEST_F(LoginTest, SwitchesAndFieldsAreStoredAndReadBack) {
  struct Stored {
    const char* automatic;
    bool on;
  };
  for (const Stored& stored : {Stored{"NO", false}, Stored{"YES", true}, Stored{"1", true},
                               Stored{"", true}, Stored{"no", true}}) {
    store_.setString("Veltramoor_automaticLogin", stored.automatic);
    EXPECT_EQ(load().automaticLogin()->isOn(), stored.on) << stored.automatic;
  }
  store_.setString("Veltramoor_username", "anna");
  store_.setString("Veltramoor_password", "secret");
  LoginViewController& login = load();
  EXPECT_EQ(login.username()->text(), QString()) << "anonymous empties the fields";
  login.anonymousLogin()->toggle();
  EXPECT_EQ(store_.string("Veltramoor_anonymousLogin"), "NO");
  EXPECT_TRUE(login.username()->isEnabled());
  EXPECT_EQ(login.username()->text(), QString()) << "they come back with the next screen";
  EXPECT_EQ(store_.string("Veltramoor_username"), "anna");
  LoginViewController& again = load();
  EXPECT_EQ(again.username()->text(), QStringLiteral("anna"));
  EXPECT_EQ(again.password()->text(), QStringLiteral("secret"));
  again.username()->becomeFirstResponder();
  again.username()->setText("bo");
  EXPECT_EQ(store_.string("Veltramoor_username"), "anna");
  again.username()->returnPressed();
  EXPECT_TRUE(again.password()->isEditing()) << "return goes on to the password";
  again.username()->resignFirstResponder();
  EXPECT_EQ(store_.string("Veltramoor_username"), "bo");
  again.password()->setText("p");
  again.anonymousLogin()->toggle();
  EXPECT_EQ(store_.string("Veltramoor_password"), "p") << "what was typed is kept first";
  EXPECT_EQ(again.password()->text(), QString());
  again.anonymousLogin()->toggle();
  for (TextField* field : {again.username(), again.password()}) {
    field->becomeFirstResponder();
    field->resignFirstResponder();
  }
  EXPECT_EQ(store_.string("Veltramoor_username"), "bo") << "passing through deletes nothing";
  EXPECT_EQ(store_.string("Veltramoor_password"), "p");
  again.username()->becomeFirstResponder();
  again.username()->setText("cara");
  again.username()->resignFirstResponder();
  again.password()->becomeFirstResponder();
  again.password()->returnPressed();
  EXPECT_EQ(store_.string("Veltramoor_username"), "cara");
  EXPECT_EQ(store_.string("Veltramoor_password"), "") << "another account does not get this one's";
  again.automaticLogin()->toggle();
  EXPECT_EQ(store_.string("Veltramoor_automaticLogin"), "NO");
  EXPECT_FALSE(again.hasBackgroundWork()) << "return starts no login";
}

TEST_F(LoginTest, AnonymousUseAsksOnlyForTheNotice) {
  load();
  logIn();
  EXPECT_EQ(switches_, 1);
  EXPECT_EQ(targets(), std::vector<std::string>{"GET /veltramoor.php"});
  EXPECT_EQ(UserInfo::sharedInstance().username(), "Anonymous");
  EXPECT_FALSE(LoadingIndicator::current().isShown());
}

TEST_F(LoginTest, ARightPasswordSignsInAndASessionNeedsNone) {
  for (const LoginAnswer answer : {LoginAnswer::RedirectToSettings, LoginAnswer::SettingsPage}) {
    CookieStorage::sharedInstance().erase({"127.0.0.1", ".127.0.0.1"});
    site_.setLoginAnswer(answer);
    site_.clearLog();
    switches_ = 0;
    loadAccount("anna", QString::fromUtf8("p&=%+é word"));
    logIn();
    ASSERT_EQ(switches_, 1) << alert().toStdString();
    EXPECT_EQ(UserInfo::sharedInstance().username(), "anna");
    std::vector<std::string> expected{"GET /settings", "POST /login"};
    if (answer == LoginAnswer::RedirectToSettings) {
      expected.emplace_back("GET /settings");
    }
    expected.insert(expected.end(),
                    {"GET /language/en_EN", "GET /", "GET /settings", "GET /veltramoor.php"});
    EXPECT_EQ(targets(), expected);
    const auto log = site_.log();
    EXPECT_EQ(log[1].body,
              "username=anna&password=p%26%3D%25%2B%C3%A9%20word&act=login&submit=Login");
  }
  site_.clearLog();
  switches_ = 0;
  UserInfo::sharedInstance().setUsername("Anonymous");
  loadAccount("anna", "");
  logIn();
  EXPECT_EQ(switches_, 1);
  EXPECT_EQ(UserInfo::sharedInstance().username(), "anna");
  EXPECT_EQ(targets(), (std::vector<std::string>{"GET /settings", "GET /language/en_EN", "GET /",
                                                 "GET /settings", "GET /veltramoor.php"}));
}

TEST_F(LoginTest, FailuresSayWhyAndLeaveTheScreenReady) {
  struct Failure {
    const char* path;
    FaultKind kind;
    const char* message;
  };
  const char* connection = "Connection error. Verify your data network.";
  for (const Failure& failure :
       {Failure{"/none", FaultKind::None, "Bad username or password."},
        Failure{"/", FaultKind::Close, connection}, Failure{"/", FaultKind::Error500, connection},
        Failure{"/login", FaultKind::Reset, connection}}) {
    site_.clearFaults();
    site_.setFault(failure.path, Fault{failure.kind, {}, 0});
    switches_ = 0;
    LoginViewController& login = loadAccount("anna", "wrong&=%+é");
    logIn();
    EXPECT_EQ(switches_, 0);
    EXPECT_EQ(alert(), QStringLiteral("Login failed.|%1|Cancel").arg(failure.message));
    EXPECT_TRUE(login.loginBtn()->isEnabled());
    EXPECT_FALSE(LoadingIndicator::current().isShown());
    delegate_.alertView()->dismissWithButtonIndex(0);
    EXPECT_EQ(switches_, 0);
  }
}

// The login form without a word on why, and pages that are no form at all.
TEST_F(LoginTest, AFormWithoutAReasonIsAnUnknownErrorAndAnyOtherPageASession) {
  std::string page = R"(<form action="/login" name="loginform">)";
  const test::RawServer site(
      [&page](const test::RecordedRequest&) { return test::RawServer::response(200, page); });
  SiteConfiguration configuration = SiteConfiguration::current();
  configuration.siteHost = site.hostAndPort();
  configuration.noticeHost = "127.0.0.1:1";
  SiteConfiguration::setCurrent(configuration);
  loadAccount("a&b=c", "d");
  logIn();
  EXPECT_EQ(alert(), QStringLiteral("Login failed.|Unknown login error.  Verify you have cookies "
                                    "enabled.  Goto Settings->Safari->Accept Cookies.  Select "
                                    "'From visited' or 'Always' and restart the app.|Cancel"));
  EXPECT_EQ(site.requests().back().body, "username=a&b=c&password=d&act=login&submit=Login");
  delegate_.alertView()->dismissWithButtonIndex(0);
  for (const std::size_t size : {std::size_t{10}, std::size_t{5'000'000}}) {
    switches_ = 0;
    page = std::string(size, '.');
    loadAccount("a", "d");
    logIn();
    EXPECT_EQ(switches_, 1) << "a page in another layout, " << size << " bytes";
    EXPECT_EQ(UserInfo::sharedInstance().username(), "Anonymous");
  }
}

TEST_F(LoginTest, TheNoticeDecides) {
  struct Answer {
    const char* text;
    const char* alert;
    int switchesBefore;
    int switchesAfter;
  };
  for (const Answer& answer : {
           Answer{"", "||", 1, 1},
           Answer{"HELLO:x", "||", 1, 1},
           Answer{"go:x", "||", 1, 1},
           Answer{"GO:Welcome:back", "|Welcome|OK", 0, 1},
           Answer{"GO", "||", 1, 1},
           Answer{"STOP:Too old", "Login error|Too old|OK", 0, 0},
           Answer{"STOP", "Login error||OK", 0, 0},
       }) {
    site_.setNotice(answer.text);
    switches_ = 0;
    LoginViewController& login = load();
    logIn();
    EXPECT_EQ(switches_, answer.switchesBefore) << answer.text;
    EXPECT_EQ(alert(), QString::fromUtf8(answer.alert)) << answer.text;
    EXPECT_FALSE(LoadingIndicator::current().isShown()) << answer.text;
    EXPECT_EQ(login.loginBtn()->isEnabled(), QByteArray(answer.text).startsWith("STOP"))
        << answer.text;
    delegate_.alertView()->dismissWithButtonIndex(0);
    EXPECT_EQ(switches_, answer.switchesAfter) << answer.text;
  }
}

TEST_F(LoginTest, ANoticeServerHoldsNobodyUpForMoreThanThreeSeconds) {
  const test::RawServer dripping([](const test::RecordedRequest&) {
    return test::RawReply::dripping(test::RawServer::response(200, std::string(100, 'S')),
                                    std::chrono::milliseconds(1000));
  });
  setNoticeHost(dripping.hostAndPort());
  load();
  // The window lives on meanwhile.
  int turns = 0;
  QTimer ticking;
  QObject::connect(&ticking, &QTimer::timeout, [&turns] { ++turns; });
  ticking.start(50);
  QElapsedTimer held;
  held.start();
  login_->login();
  EXPECT_TRUE(waitFor([this] { return switches_ == 1; }));
  EXPECT_LT(held.elapsed(), 4500);
  EXPECT_GT(turns, 5);
  EXPECT_EQ(dripping.hits(), 1U);
}

// The window closed during the wait is the end of the program, not of the wait.
TEST_F(LoginTest, ClosingDuringTheNoticeCheckLogsNobodyIn) {
  const test::RawServer silent([](const test::RecordedRequest&) { return test::RawReply::hang(); });
  setNoticeHost(silent.hostAndPort());
  load();
  QTimer::singleShot(0, [this] { login_->login(); });
  QTimer watching;
  QObject::connect(&watching, &QTimer::timeout, [&] {
    if (silent.hits() == 1) {
      QCoreApplication::quit();
    }
  });
  watching.start(20);
  QElapsedTimer ran;
  ran.start();
  QCoreApplication::exec();
  EXPECT_LT(ran.elapsed(), 2500);
  EXPECT_EQ(silent.hits(), 1U);
  EXPECT_EQ(switches_, 0);
  EXPECT_FALSE(delegate_.alertView()->isVisible());
}

TEST_F(LoginTest, AStoreThatTookTheFilesPlaceIsToldOfOnce) {
  const test::TemporaryFolder folder;
  std::ofstream(folder / "plain") << "no folder";
  Preferences memory(folder / "plain" / "state.sqlite");
  Preferences::setSharedInstance(&memory);
  delegate_.applicationDidFinishLaunching(
      std::make_shared<ViewController>(QStringLiteral("Blank.qml")));
  EXPECT_TRUE(memory.setString("key", "value"));
  EXPECT_TRUE(test::deliver());
  EXPECT_TRUE(alert().contains("until Veltramoor closes")) << alert().toStdString();
  delegate_.alertView()->dismissWithButtonIndex(0);
  EXPECT_FALSE(delegate_.alertView()->isVisible());
  EXPECT_TRUE(delegate_.applicationWillTerminate());
  Preferences::setSharedInstance(&store_);
}

// One alert for all of it; what was typed is still what a sign-in would send.
TEST_F(LoginTest, ASwitchThatTheStoreRefusesGoesBack) {
  test::FileStore store;
  LoginViewController& login = load();
  login.anonymousLogin()->toggle();
  {
    const test::FullDisk fullDisk;
    login.anonymousLogin()->toggle();
    login.automaticLogin()->toggle();
    login.username()->becomeFirstResponder();
    login.username()->setText("anna");
    login.username()->resignFirstResponder();
  }
  EXPECT_FALSE(login.anonymousLogin()->isOn());
  EXPECT_FALSE(login.automaticLogin()->isOn());
  EXPECT_TRUE(login.username()->isEnabled());
  EXPECT_EQ(login.username()->text(), QStringLiteral("anna"));
  EXPECT_EQ(store->string("Veltramoor_username"), std::nullopt);
  EXPECT_TRUE(test::deliver());
  EXPECT_TRUE(alert().startsWith("Not saved.|The change could not be saved"))
      << alert().toStdString();
  delegate_.alertView()->dismissWithButtonIndex(0);
  EXPECT_FALSE(delegate_.alertView()->isVisible());
}

TEST_F(LoginTest, KeyboardAndDeviceMoveTheScreen) {
  LoginViewController& login = load();
  int moves = 0;
  QObject::connect(&login, &LoginViewController::contentOffsetChanged, [&moves] { ++moves; });
  Device& device = Device::sharedInstance();
  device.setKeyboardShown(true);
  device.setKeyboardShown(true);
  EXPECT_EQ(login.contentOffset(), 30);
  EXPECT_EQ(moves, 1);
  device.setKeyboardShown(false);
  EXPECT_EQ(login.contentOffset(), 0);
  const QSizeF before = device.screenSize();
  for (const auto& [size, image] :
       std::vector<std::pair<QSizeF, QString>>{{{320, 480}, "loginBack.png"},
                                               {{320, 568}, "loginBack5.png"},
                                               {{360, 720}, "loginBack.png"},
                                               {{768, 568}, "loginBack5.png"},
                                               {{768, 1024}, "loginBackIPad.png"}}) {
    device.setScreenSize(size);
    EXPECT_EQ(login.backgroundImage(), image);
  }
  device.setScreenSize(before);
}

TEST_F(LoginTest, ThePanelShowsTheVersionAloneAndTheDonationLeavesTheApplication) {
  LoginViewController& login = load();
  EXPECT_EQ(login.infoView()->versionLbl(), QString());
  login.toggleInfoView();
  EXPECT_TRUE(login.isInfoViewShown());
  EXPECT_EQ(login.infoView()->versionLbl(), QString::fromStdString(Bundle::version()));
  login.returnView();
  EXPECT_FALSE(login.isInfoViewShown());
  DonateViewController& donate = *login.donateView();
  QStringList opened;
  donate.setOpenUrl([&opened](const QUrl& url) {
    opened.append(url.toString());
    return opened.size() < 2;
  });
  EXPECT_TRUE(donate.shouldStartLoadWithRequest(QUrl("https://a.test/"), 5));
  EXPECT_FALSE(donate.shouldStartLoadWithRequest(QUrl("https://a.test/"), 0));
  EXPECT_EQ(opened, QStringList{"https://a.test/"});
  donate.donate();
  EXPECT_EQ(opened.back(), QString::fromStdString(SiteConfiguration::current().donationUrl));
  EXPECT_TRUE(alert().contains(opened.back())) << "without a browser the address is shown";
  EXPECT_TRUE(donate.html().startsWith("<a href=\"https://donate.example/\" target=\"_blank\">"));
}

}  // namespace
}  // namespace veltramoor
