// Where the person's BitTorrent client is, to be filled in.
#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "remote/screens/DiagnosisModel.h"
#include "toolkit/Button.h"
#include "toolkit/SegmentedControl.h"
#include "toolkit/TextField.h"
#include "toolkit/ViewController.h"

namespace veltramoor {

class ServerInfo;

/// Kind of client, address, port and credentials of the remote interface, and a button that tries
/// them and one that finds out why they fail. Each field is stored when its editing ends, the kind
/// when it is chosen; there is nothing to save. What the store refuses gives way to what is stored.
/// Choosing another kind resets the port to the kind's own. Opening the screen for the first time
/// stores the kind on show, and its port when none is stored. Main thread only.
class ServerSettingsViewController : public veltramoor::ViewController {
  Q_OBJECT
  Q_PROPERTY(veltramoor::SegmentedControl* serverClient READ serverClient CONSTANT)
  Q_PROPERTY(QString serverDescription READ serverDescription NOTIFY descriptionChanged)
  Q_PROPERTY(veltramoor::TextField* serverAddress READ serverAddress CONSTANT)
  Q_PROPERTY(veltramoor::TextField* serverPort READ serverPort CONSTANT)
  Q_PROPERTY(veltramoor::TextField* serverUser READ serverUser CONSTANT)
  Q_PROPERTY(veltramoor::TextField* serverPassword READ serverPassword CONSTANT)
  Q_PROPERTY(veltramoor::Button* testButton READ testButton CONSTANT)
  Q_PROPERTY(veltramoor::Button* diagnoseButton READ diagnoseButton CONSTANT)
  Q_PROPERTY(veltramoor::DiagnosisModel* diagnosis READ diagnosis CONSTANT)
  Q_PROPERTY(double contentHeight READ contentHeight NOTIFY contentHeightChanged)
  Q_PROPERTY(bool focusTaken MEMBER focusTaken_)

 public:
  ServerSettingsViewController();

  /// Makes the screen that the test button opens; it is told who opens it. To be set before this
  /// screen appears: the button is disabled without it.
  std::function<std::shared_ptr<ViewController>(ServerSettingsViewController&)> makeTestPage;

  void viewDidLoad() override;
  void viewWillAppear() override;
  void viewWillDisappear() override;
  void cancel() override;

  [[nodiscard]] bool hasBackgroundWork() const override { return diagnosis_.hasBackgroundWork(); }

  /// The choice of a kind, by its segment.
  void didSelectClient();
  /// Stores what is still being edited and opens the test page.
  Q_INVOKABLE void test();
  /// Stores what is still being edited and finds out, step by step, whether the client can be used.
  Q_INVOKABLE void diagnose();

  [[nodiscard]] SegmentedControl* serverClient() { return &serverClient_; }
  /// How the chosen kind is set up: lines, of which those after the first begin with a tab.
  [[nodiscard]] QString serverDescription() const { return serverDescription_; }
  [[nodiscard]] TextField* serverAddress() { return &serverAddress_; }
  [[nodiscard]] TextField* serverPort() { return &serverPort_; }
  [[nodiscard]] TextField* serverUser() { return &serverUser_; }
  [[nodiscard]] TextField* serverPassword() { return &serverPassword_; }
  [[nodiscard]] Button* testButton() { return &testButton_; }
  [[nodiscard]] Button* diagnoseButton() { return &diagnoseButton_; }
  [[nodiscard]] DiagnosisModel* diagnosis() { return &diagnosis_; }
  /// Height in points of what the screen scrolls: 640, and 700 once a keyboard has come and gone.
  [[nodiscard]] double contentHeight() const { return contentHeight_; }
  /// The field whose editing began last; null before the first.
  [[nodiscard]] TextField* currTextField() const { return currTextField_; }

 signals:
  void descriptionChanged();
  void contentHeightChanged();
  /// `field`, made 30 points higher, is to be scrolled into view.
  void scrollToFieldRequested(veltramoor::TextField* field);

 private:
  /// Stores what is typed by `set` and, when that is refused, shows what `stored` says.
  void connectField(TextField& field, TextField* next,
                    bool (ServerInfo::*set)(std::optional<std::string>),
                    std::optional<std::string> (ServerInfo::*stored)() const);
  void chooseClient();
  void endEditing();
  void keyboardWasShown();
  void keyboardWasHidden();

  SegmentedControl serverClient_;
  QString serverDescription_;
  TextField serverAddress_;
  TextField serverPort_;
  TextField serverUser_;
  TextField serverPassword_;
  Button testButton_;
  double contentHeight_ = 640;
  TextField* currTextField_ = nullptr;
  bool keyboardVisible_ = false;
  bool leaving_ = false;
  // The focus is where the person put it, and is not to be moved on. Told by what draws the screen.
  bool focusTaken_ = false;
  Button diagnoseButton_;
  DiagnosisModel diagnosis_;
};

}  // namespace veltramoor
