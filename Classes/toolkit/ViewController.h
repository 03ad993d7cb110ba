// A screen: its state and what happens on it, drawn elsewhere.
#pragma once

#include <QObject>
#include <QString>
#include <memory>

#include "toolkit/BarButton.h"
#include "toolkit/TabBarItem.h"
#include "toolkit/View.h"

namespace veltramoor {

class NavigationController;
class TabBarController;

/// What a key asks of the screen on show.
enum class KeyCommand { Search, Reload, Back, Forward };

/// Base of all screens. Owned by shared pointers, so that background work can keep a screen alive
/// until its outcome has been delivered; lives on the main thread, and so does its destruction.
class ViewController : public QObject, public std::enable_shared_from_this<ViewController> {
  Q_OBJECT
  Q_PROPERTY(QString title READ title NOTIFY titleChanged)
  Q_PROPERTY(QString interfaceFile READ interfaceFile CONSTANT)
  Q_PROPERTY(veltramoor::TabBarItem* tabBarItem READ tabBarItem CONSTANT)
  Q_PROPERTY(veltramoor::View* view READ view CONSTANT)
  Q_PROPERTY(veltramoor::BarItem* leftBarItem READ leftBarItem CONSTANT)
  Q_PROPERTY(veltramoor::BarItem* rightBarItem READ rightBarItem CONSTANT)

 public:
  /// `interfaceFile`: the QML file that draws the screen, for example "TorrentList.qml".
  explicit ViewController(QString interfaceFile);

  [[nodiscard]] QString title() const { return title_; }
  void setTitle(const QString& title);
  [[nodiscard]] QString interfaceFile() const { return interfaceFile_; }
  [[nodiscard]] virtual TabBarItem* tabBarItem() { return &tabBarItem_; }
  [[nodiscard]] View* view() { return &view_; }

  /// The container that shows this screen, null for none. Not owned.
  [[nodiscard]] NavigationController* navigationController() const { return navigationController_; }
  [[nodiscard]] TabBarController* tabBarController() const;
  /// Whether no other screen of its containers is shown in its place; true without a container.
  [[nodiscard]] bool isOnShow() const;

  /// What the bar shows beside the title; without a left one a pushed screen gets a back button.
  [[nodiscard]] BarItem* leftBarItem() { return &leftBarItem_; }
  [[nodiscard]] BarItem* rightBarItem() { return &rightBarItem_; }

  /// Called before the screen appears: its container and the device are known.
  virtual void viewWillLayout() {}
  /// Called once, before the screen is shown for the first time.
  virtual void viewDidLoad() {}
  /// Called each time the screen is about to be shown, has been shown, and is about to be covered
  /// or removed.
  virtual void viewWillAppear() {}
  virtual void viewDidAppear() {}
  virtual void viewWillDisappear() {}
  /// Leaves a pushed screen, as its back button does.
  Q_INVOKABLE virtual void cancel();
  /// What the Escape key does on this screen; false when it does nothing here. A container asks the
  /// screen that it shows.
  virtual bool escape() { return false; }
  /// What another key does on this screen; false when it does nothing here. A container asks the
  /// screen that it shows.
  virtual bool perform(KeyCommand /*command*/) { return false; }
  /// What a container calls to show the screen: loads it when needed, then `viewWillAppear`.
  void appear();
  /// Whether an operation of this screen, or of one that it contains, is waiting or running.
  [[nodiscard]] virtual bool hasBackgroundWork() const { return false; }

 signals:
  void titleChanged();

 private:
  friend class NavigationController;
  friend class TabBarController;

  QString interfaceFile_;
  QString title_;
  TabBarItem tabBarItem_;
  View view_;
  BarItem leftBarItem_;
  BarItem rightBarItem_;
  bool loaded_ = false;
  NavigationController* navigationController_ = nullptr;
  TabBarController* tabBarController_ = nullptr;
};

/// `self` as a shared pointer of its own class: what completions capture.
template <typename Controller>
[[nodiscard]] std::shared_ptr<Controller> sharedController(Controller* self) {
  return std::static_pointer_cast<Controller>(self->shared_from_this());
}

}  // namespace veltramoor
