// Start and end of the application.
#pragma once

#include <QObject>
#include <QString>
#include <memory>

#include "shell/overlay/LoadingIndicator.h"
#include "shell/overlay/SendingTorrentIndicator.h"
#include "toolkit/AlertView.h"
#include "toolkit/Announcements.h"
#include "toolkit/Device.h"
#include "toolkit/InputWatch.h"
#include "toolkit/PopupMenu.h"
#include "toolkit/Presentation.h"
#include "toolkit/ViewController.h"

namespace veltramoor {

/// Owns the root screen and what lies over every screen. One in a process, made on the main thread
/// after the application object.
class VeltramoorAppDelegate : public QObject {
  Q_OBJECT
  Q_PROPERTY(veltramoor::ViewController* viewController READ viewController CONSTANT)
  Q_PROPERTY(veltramoor::AlertView* alertView READ alertView CONSTANT)
  Q_PROPERTY(veltramoor::View* window READ window CONSTANT)
  Q_PROPERTY(veltramoor::Device* device READ device CONSTANT)
  Q_PROPERTY(veltramoor::Announcements* announcements READ announcements CONSTANT)
  Q_PROPERTY(veltramoor::InputWatch* input READ input CONSTANT)
  Q_PROPERTY(veltramoor::Presentation* presentation READ presentation CONSTANT)
  Q_PROPERTY(veltramoor::PopupMenu* menu READ menu CONSTANT)
  Q_PROPERTY(veltramoor::LoadingIndicator* loadingIndicator READ loadingIndicator CONSTANT)
  Q_PROPERTY(veltramoor::SendingTorrentIndicator* sendingTorrentIndicator READ
                 sendingTorrentIndicator CONSTANT)

 public:
  VeltramoorAppDelegate();
  ~VeltramoorAppDelegate() override;

  /// The application's one delegate.
  static VeltramoorAppDelegate& sharedInstance();

  /// Notes the running version, and builds the root screen, or takes `root` for it.
  void applicationDidFinishLaunching(std::shared_ptr<ViewController> root = nullptr);
  /// Gives sends and pages that are under way one second to end, then has the rest fail, so that
  /// the program ends within two whatever a server does. Nothing may be shown afterwards. False
  /// when something could not be ended: then the screens are kept, and the program must leave
  /// without tearing down what that work may still touch.
  [[nodiscard]] bool applicationWillTerminate();

  [[nodiscard]] ViewController* viewController() const { return viewController_.get(); }
  [[nodiscard]] AlertView* alertView() { return &alertView_; }
  [[nodiscard]] View* window() const;
  [[nodiscard]] Device* device() const { return &Device::sharedInstance(); }
  [[nodiscard]] Announcements* announcements() const { return &Announcements::sharedInstance(); }
  [[nodiscard]] InputWatch* input() const { return &InputWatch::sharedInstance(); }
  [[nodiscard]] Presentation* presentation() const { return &Presentation::sharedInstance(); }
  [[nodiscard]] PopupMenu* menu() const { return &PopupMenu::sharedInstance(); }
  [[nodiscard]] LoadingIndicator* loadingIndicator() const;
  [[nodiscard]] SendingTorrentIndicator* sendingTorrentIndicator() const;

  /// What the Escape key does, whatever has the focus: it closes an alert, else a menu, else leaves
  /// a form that covers everything, else goes on from a wait that offers it, else asks the screen
  /// on show. A screen that has no use for it leaves it to what has the focus.
  Q_INVOKABLE void escape();

  /// What Ctrl+F does: the search is on show, and what is typed goes to it.
  Q_INVOKABLE void search() { perform(KeyCommand::Search); }
  /// Fetches what is on show again.
  Q_INVOKABLE void reload() { perform(KeyCommand::Reload); }
  /// Along the history of a web page.
  Q_INVOKABLE void goBack() { perform(KeyCommand::Back); }
  Q_INVOKABLE void goForward() { perform(KeyCommand::Forward); }
  /// Chooses the bar's slot `slot`, from 0; -1 is the last one.
  Q_INVOKABLE void selectTab(int slot);
  /// The sheet of keys, over everything else.
  Q_INVOKABLE void showKeys();

  /// URL of a resource image, for views.
  Q_INVOKABLE [[nodiscard]] static QString imageUrl(const QString& name);

 private:
  void perform(KeyCommand command);

  std::shared_ptr<ViewController> viewController_;
  AlertView alertView_;
};

}  // namespace veltramoor
