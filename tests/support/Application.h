// The real window with a screen in it, and the finger and keyboard of its user.
#pragma once

#include <gtest/gtest.h>

#include <QQmlApplicationEngine>
#include <QQuickItem>
#include <QQuickWindow>
#include <QtTest/QTest>
#include <memory>
#include <optional>

#include "lists/AllListViewController.h"
#include "platform/UrlLoading.h"
#include "shell/QmlImportPaths.h"
#include "shell/SwitchViewController.h"
#include "support/ScreenTest.h"
#include "toolkit/NavigationController.h"

namespace veltramoor::test {

/// The item of that name beneath `root`: what a loader made is no QObject child of the window.
inline QQuickItem* itemNamed(QQuickItem* root, const QString& name, bool onlyShown = false) {
  if (root->objectName() == name) {
    return root;
  }
  if (root->objectName() == QLatin1String("webView")) {
    return nullptr;  // The engine's own items below it have no type information to be checked by.
  }
  for (QQuickItem* child : root->childItems()) {
    QQuickItem* found =
        onlyShown && !child->isVisible() ? nullptr : itemNamed(child, name, onlyShown);
    if (found != nullptr) {
      return found;
    }
  }
  return nullptr;
}

/// One run of the application, from its start to its end.
class Application {
 public:
  /// The Recent list in a stack of its own.
  Application()
      : Application(std::make_shared<NavigationController>(
            std::make_shared<AllListViewController>(TableViewStyle::Plain))) {}
  /// Shows `root`; null: what the application opens on.
  explicit Application(const std::shared_ptr<ViewController>& root) {
    UrlLoading::sharedInstance().resume();
    delegate_.applicationDidFinishLaunching(root);
    for (const QString& path : qmlImportPaths()) {
      engine_->addImportPath(path);
    }
    engine_->load(QUrl(QStringLiteral("qrc:/qt/qml/Veltramoor/Main.qml")));
    window_ = qobject_cast<QQuickWindow*>(engine_->rootObjects().value(0));
    EXPECT_NE(window_, nullptr);
    EXPECT_TRUE(QTest::qWaitForWindowExposed(window_));
  }
  ~Application() {
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    engine_.reset();
    EXPECT_TRUE(delegate_.applicationWillTerminate());
    // What workers handed over last would keep a screen, and its wait, into the next case.
    QCoreApplication::processEvents();
    // The device outlives the window that gave it a size.
    Device::sharedInstance().setScreenSize({320, 480});
  }

  [[nodiscard]] QQuickWindow* window() const { return window_; }
  [[nodiscard]] AlertView& alert() { return *delegate_.alertView(); }
  /// The root of an application that opened by itself.
  [[nodiscard]] SwitchViewController& root() {
    return *qobject_cast<SwitchViewController*>(delegate_.viewController());
  }
  [[nodiscard]] AllListViewController& list() {
    auto* navigation = qobject_cast<NavigationController*>(delegate_.viewController());
    return *qobject_cast<AllListViewController*>(navigation->topViewController());
  }
  [[nodiscard]] bool waitForRows(int count) {
    const bool there = waitFor([&] {
      return list().rows()->torrentCount() == count && list().tableView()->allowsSelection();
    });
    EXPECT_TRUE(there) << list().rows()->torrentCount() << " rows, "
                       << list().notice().toStdString();
    return there;
  }
  /// Rather one on show than one of the same name on a screen beneath.
  [[nodiscard]] QQuickItem* item(const char* name) const {
    QQuickItem* shown = itemNamed(window_->contentItem(), QLatin1String(name), true);
    return shown != nullptr ? shown : itemNamed(window_->contentItem(), QLatin1String(name));
  }
  [[nodiscard]] bool waitForItem(const char* name) const {
    return waitFor([&] {
      const QQuickItem* found = item(name);
      return found != nullptr && found->isVisible();
    });
  }
  /// The item that draws row `row`, once the table has laid it out.
  [[nodiscard]] QQuickItem* row(int row) const {
    QQuickItem* found = nullptr;
    EXPECT_TRUE(waitFor([&] {
      QMetaObject::invokeMethod(item("torrentTable"), "itemAtIndex",
                                Q_RETURN_ARG(QQuickItem*, found), Q_ARG(int, row));
      return found != nullptr;
    })) << "row "
        << row;
    return found;
  }
  /// The name of what the keys go to; empty: nothing.
  [[nodiscard]] std::string focused() const {
    const QQuickItem* item = window_->activeFocusItem();
    return item == nullptr ? std::string() : item->objectName().toStdString();
  }
  void click(QQuickItem* target, QPointF at = {-1, -1}) const {
    ASSERT_NE(target, nullptr);
    const QPointF local = at.x() < 0 ? target->boundingRect().center() : at;
    // Rows of buttons are laid out with the next frame.
    ASSERT_TRUE(waitFor(
        [&] { return QRectF(QPointF(), window_->size()).contains(target->mapToScene(local)); }));
    QTest::mouseClick(window_, Qt::LeftButton, {}, target->mapToScene(local).toPoint());
  }
  void tapSend(int index) const { click(itemNamed(row(index), QStringLiteral("sendButton"))); }
  void type(Qt::Key key) const { QTest::keyClick(window_, key); }
  /// Long enough for the keyboard to repeat it.
  void hold(Qt::Key key) const {
    for (int i = 0; i < 20; ++i) {
      QKeyEvent held(QEvent::KeyPress, key, Qt::NoModifier, {}, i > 0);
      QCoreApplication::sendEvent(window_, &held);
    }
  }
  void typeText(const char* text) const {
    for (; *text != 0; ++text) {
      QTest::keyClick(window_, *text);
    }
  }

 private:
  VeltramoorAppDelegate delegate_;
  std::optional<QQmlApplicationEngine> engine_{std::in_place};
  QQuickWindow* window_ = nullptr;
};

}  // namespace veltramoor::test
