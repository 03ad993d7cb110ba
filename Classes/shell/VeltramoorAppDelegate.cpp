#include "shell/VeltramoorAppDelegate.h"

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QGuiApplication>
#include <QInputMethod>
#include <QKeyEvent>
#include <QThread>
#include <QWindow>
#include <algorithm>
#include <cassert>
#include <chrono>

#include "PreferencesKeys.h"
#include "platform/Bundle.h"
#include "platform/MainThread.h"
#include "platform/Preferences.h"
#include "platform/RefusedWrites.h"
#include "platform/UrlLoading.h"
#include "shell/DemoSiteProcess.h"
#include "shell/KeySheetController.h"
#include "shell/SwitchViewController.h"
#include "shell/overlay/ApplicationWindow.h"
#include "site/AnonymousUser.h"
#include "toolkit/Image.h"

namespace veltramoor {
namespace {
VeltramoorAppDelegate* theDelegate = nullptr;
constexpr std::chrono::milliseconds kGrace{1000};

void recordVersion() {
  Preferences& preferences = Preferences::sharedInstance();
  if (preferences.string(PreferencesKeys::version) != Bundle::version()) {
    preferences.setString(PreferencesKeys::version, Bundle::version());
    preferences.synchronize();
  }
}

void coverByKeyboard() {
  const QRectF keys = QGuiApplication::inputMethod()->keyboardRectangle();
  const double height = Device::sharedInstance().screenSize().height();
  Device::sharedInstance().setKeyboardCover(
      keys.isEmpty() ? 0 : std::clamp(height - keys.top(), 0.0, height));
}

}  // namespace

VeltramoorAppDelegate::VeltramoorAppDelegate() {
  assert(theDelegate == nullptr && qApp != nullptr);
  theDelegate = this;
  MainThread::attach(
      [](MainThread::Task task) {
        QMetaObject::invokeMethod(qApp, std::move(task), Qt::QueuedConnection);
      },
      true);
  Alerts::setPresenter(&alertView_);
  RefusedWrites::setListener([](const std::string& sentence) {
    MainThread::perform([sentence] { Alerts::showMessage("Not saved.", sentence); });
  });
  const QInputMethod* keyboard = QGuiApplication::inputMethod();
  connect(keyboard, &QInputMethod::visibleChanged, this,
          [keyboard] { Device::sharedInstance().setKeyboardShown(keyboard->isVisible()); });
  connect(keyboard, &QInputMethod::keyboardRectangleChanged, this, &coverByKeyboard);
}

VeltramoorAppDelegate::~VeltramoorAppDelegate() {
  RefusedWrites::setListener(nullptr);
  Alerts::setPresenter(nullptr);
  theDelegate = nullptr;
}

VeltramoorAppDelegate& VeltramoorAppDelegate::sharedInstance() {
  assert(theDelegate != nullptr);
  return *theDelegate;
}

void VeltramoorAppDelegate::applicationDidFinishLaunching(std::shared_ptr<ViewController> root) {
  recordVersion();
  becomeAnonymous();
  viewController_ = root != nullptr ? std::move(root) : std::make_shared<SwitchViewController>();
  viewController_->appear();
  viewController_->viewDidAppear();
  // One that refused a write just now has been told of.
  const auto notice = Preferences::sharedInstance().openingNotice();
  if (notice && notice != RefusedWrites::told()) {
    Alerts::showMessage("Settings", *notice);
  }
}

bool VeltramoorAppDelegate::applicationWillTerminate() {
  if (viewController_ == nullptr) {
    return true;
  }
  viewController_->viewWillDisappear();
  for (const QDeadlineTimer grace(kGrace);
       viewController_->hasBackgroundWork() && !grace.hasExpired();) {
    QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
    QThread::msleep(5);
  }
  MainThread::close();
  UrlLoading::sharedInstance().abandonAll();
  for (const QDeadlineTimer grace(kGrace);
       viewController_->hasBackgroundWork() && !grace.hasExpired();) {
    QThread::msleep(5);
  }
  DemoSiteProcess::sharedInstance().stop();
  if (viewController_->hasBackgroundWork()) {
    return false;
  }
  viewController_.reset();
  return true;
}

View* VeltramoorAppDelegate::window() const { return applicationWindow(); }

LoadingIndicator* VeltramoorAppDelegate::loadingIndicator() const {
  return &LoadingIndicator::current();
}

SendingTorrentIndicator* VeltramoorAppDelegate::sendingTorrentIndicator() const {
  return &SendingTorrentIndicator::current();
}

void VeltramoorAppDelegate::escape() {
  LoadingIndicator* loading = loadingIndicator();
  LoadingIndicator* sending = sendingTorrentIndicator();
  if (alertView_.isVisible()) {
    alertView_.dismissWithButtonIndex(0);
  } else if (menu()->isOpen()) {
    menu()->close();
  } else if (ViewController* form = presentation()->controller()) {
    form->cancel();
  } else if (loading->canGoOn()) {
    loading->goOn();
  } else if (sending->canGoOn()) {
    sending->goOn();
  } else if (viewController_ != nullptr && !viewController_->escape()) {
    // Nothing here wants the key: it goes to what has the focus, for a page may close something
    // with it. Not by way of the window, which would look for a shortcut again.
    QObject* focus = QGuiApplication::focusObject();
    if (focus != nullptr && focus != QGuiApplication::focusWindow()) {
      QKeyEvent press(QEvent::KeyPress, Qt::Key_Escape, Qt::NoModifier);
      QCoreApplication::sendEvent(focus, &press);
    }
  }
}

void VeltramoorAppDelegate::perform(KeyCommand command) {
  if (viewController_ != nullptr) {
    viewController_->perform(command);
  }
}

void VeltramoorAppDelegate::selectTab(int slot) {
  const auto* root = qobject_cast<SwitchViewController*>(viewController_.get());
  if (root != nullptr && root->showLogin()) {
    TabBarController& tabs = *root->tabBarController();
    tabs.didSelectSlot(slot < 0 ? tabs.bar()->count() - 1 : slot);
  }
}

void VeltramoorAppDelegate::showKeys() {
  presentation()->present(std::make_shared<KeySheetController>());
}

QString VeltramoorAppDelegate::imageUrl(const QString& name) { return veltramoor::imageUrl(name); }

}  // namespace veltramoor
