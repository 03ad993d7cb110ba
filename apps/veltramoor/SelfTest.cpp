#include "SelfTest.h"

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QDir>
#include <QQmlComponent>
#include <QThread>
#include <atomic>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <string>
#include <system_error>

#include "lists/AllListViewController.h"
#include "shell/SwitchViewController.h"
#include "toolkit/EngineMessages.h"
#include "toolkit/NavigationController.h"
#include "toolkit/Presentation.h"

namespace veltramoor {
namespace {

constexpr int kFrames = 2;
constexpr int kFrameLimit = 2000;
constexpr int kIdleLimit = 10000;

std::atomic<int> warnings = 0;

void count(QtMsgType type, const QMessageLogContext&, const QString& message) {
  if (type != QtDebugMsg && type != QtInfoMsg && !isEngineMessage(message)) {
    ++warnings;
    std::fprintf(stderr, "self-test: %s\n", qPrintable(message));
  }
}

void complain(const QString& message) { count(QtWarningMsg, {}, message); }

class SelfTest {
 public:
  SelfTest(VeltramoorAppDelegate& delegate, QQmlApplicationEngine& engine, QQuickWindow& window)
      : delegate_(delegate), engine_(engine), window_(window) {}

  void run() {
    loadEveryFile();
    root_ = qobject_cast<SwitchViewController*>(delegate_.viewController());
    if (root_ == nullptr) {
      complain(QStringLiteral("no root screen"));
      return;
    }
    showLogin();
    root_->switchViews();
    show("the first tab");
    for (const auto& tab : root_->tabBarController()->viewControllers()) {
      showTab(*tab);
    }
    showAlert();
    std::printf("self-test: %d screens shown\n", shown_);
  }

 private:
  void loadEveryFile() {
    const QDir folder(QStringLiteral(":/qt/qml/Veltramoor"));
    const QStringList files = folder.entryList({QStringLiteral("*.qml")});
    for (const QString& file : files) {
      const QQmlComponent component(&engine_,
                                    QUrl(QStringLiteral("qrc:/qt/qml/Veltramoor/") + file));
      if (!component.isReady()) {
        complain(component.errorString());
      }
    }
    std::printf("self-test: %d QML files loaded\n", static_cast<int>(files.size()));
  }

  // Waits until the window has painted the screen and nothing is under way.
  void show(const char* what) {
    int frames = 0;
    QObject context;
    QObject::connect(
        &window_, &QQuickWindow::frameSwapped, &context, [&frames] { ++frames; },
        Qt::QueuedConnection);
    const QDeadlineTimer frameLimit(kFrameLimit);
    while (frames < kFrames && !frameLimit.hasExpired()) {
      window_.update();
      QCoreApplication::processEvents();
      QThread::msleep(1);
    }
    const QDeadlineTimer idleLimit(kIdleLimit);
    while (root_->hasBackgroundWork() && !idleLimit.hasExpired()) {
      QCoreApplication::processEvents();
      QThread::msleep(1);
    }
    QCoreApplication::processEvents();
    ++shown_;
    if (frames < kFrames) {
      complain(QStringLiteral("not painted: ") + QLatin1String(what));
    }
  }

  void showLogin() {
    show("login");
    LoginViewController& login = *root_->loginViewController();
    login.toggleInfoView();
    show("information panel");
    login.returnView();
    login.site()->open();
    show("site panel");
    login.site()->close();
  }

  void showTab(ViewController& tab) {
    TabBarController& tabs = *root_->tabBarController();
    if (&tab == tabs.viewControllers().back().get()) {
      tabs.didSelectSlot(tabs.bar()->count() - 1);
      show("\"More\"");
    }
    tabs.choose(&tab);
    const QByteArray name = tab.tabBarItem()->title().toUtf8();
    show(name.constData());
    auto* stack = qobject_cast<NavigationController*>(&tab);
    auto* list = stack == nullptr
                     ? nullptr
                     : qobject_cast<AllListViewController*>(stack->topViewController());
    if (list == nullptr) {
      return;
    }
    HeaderView& header = *list->headerView();
    using Press = void (HeaderView::*)();
    for (const auto& [button, press] :
         {std::pair<Button*, Press>(header.settingsBtn(), &HeaderView::settings),
          std::pair<Button*, Press>(header.searchBtn(), &HeaderView::search),
          std::pair<Button*, Press>(header.filtersBtn(), &HeaderView::filters)}) {
      if (!button->isHidden()) {
        (header.*press)();
        show("a screen of the header");
        Presentation::sharedInstance().dismiss();
        stack->popToRootViewController();
      }
    }
  }

  void showAlert() {
    Alert alert;
    alert.title = "Self-test";
    alert.message = "Every screen was shown.";
    alert.buttons = {"Ok"};
    Alerts::show(std::move(alert));
    show("alert");
    delegate_.alertView()->dismissWithButtonIndex(0);
  }

  VeltramoorAppDelegate& delegate_;
  QQmlApplicationEngine& engine_;
  QQuickWindow& window_;
  SwitchViewController* root_ = nullptr;
  int shown_ = 0;
};

}  // namespace

SelfTestSurroundings::SelfTestSurroundings() {
  std::string folder = (std::filesystem::temp_directory_path() / "veltramoor-XXXXXX").string();
  if (::mkdtemp(folder.data()) == nullptr) {
    throw std::filesystem::filesystem_error("no folder for the self-test", folder,
                                            std::error_code(errno, std::generic_category()));
  }
  folder_ = folder;
  for (const char* name : {"XDG_DATA_HOME", "XDG_CONFIG_HOME", "XDG_CACHE_HOME"}) {
    qputenv(name, folder_.c_str());
  }
  if (qEnvironmentVariableIsEmpty("XDG_RUNTIME_DIR")) {
    qputenv("XDG_RUNTIME_DIR", folder_.c_str());
  }
  if (qEnvironmentVariableIsEmpty("DISPLAY") && qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY") &&
      qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qputenv("QT_QUICK_BACKEND", "software");
  }
  qputenv("VELTRAMOOR_REDUCED_MOTION", "1");
  qInstallMessageHandler(count);
}

SelfTestSurroundings::~SelfTestSurroundings() {
  std::error_code ignored;
  std::filesystem::remove_all(folder_, ignored);
}

int runSelfTest(VeltramoorAppDelegate& delegate, QQmlApplicationEngine& engine,
                QQuickWindow& window) {
  SelfTest(delegate, engine, window).run();
  std::printf("self-test: %d warnings\n", warnings.load());
  return warnings;
}

}  // namespace veltramoor
