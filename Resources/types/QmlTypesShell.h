// What QML knows of the shell; see QmlTypes.h.
#pragma once

#include <QtQml/qqmlregistration.h>

#include <QObject>

#include "shell/DonateViewController.h"
#include "shell/InfoView.h"
#include "shell/KeySheetController.h"
#include "shell/LoginViewController.h"
#include "shell/LogoutViewController.h"
#include "shell/SiteChooser.h"
#include "shell/SwitchViewController.h"
#include "shell/UIUnderlinedLabel.h"
#include "toolkit/TabBarController.h"

namespace veltramoor::qml {

struct DonateViewControllerUsed {
  Q_GADGET
  QML_FOREIGN(veltramoor::DonateViewController)
  QML_NAMED_ELEMENT(DonateViewController)
  QML_UNCREATABLE("made by the application")
};

struct InfoViewUsed {
  Q_GADGET
  QML_FOREIGN(veltramoor::InfoView)
  QML_NAMED_ELEMENT(InfoView)
  QML_UNCREATABLE("made by the application")
};

struct KeySheetControllerUsed {
  Q_GADGET
  QML_FOREIGN(veltramoor::KeySheetController)
  QML_NAMED_ELEMENT(KeySheetController)
  QML_UNCREATABLE("made by the application")
};

struct LoginViewControllerUsed {
  Q_GADGET
  QML_FOREIGN(veltramoor::LoginViewController)
  QML_NAMED_ELEMENT(LoginViewController)
  QML_UNCREATABLE("made by the application")
};

struct LogoutViewControllerUsed {
  Q_GADGET
  QML_FOREIGN(veltramoor::LogoutViewController)
  QML_NAMED_ELEMENT(LogoutViewController)
  QML_UNCREATABLE("made by the application")
};

struct MoreListControllerUsed {
  Q_GADGET
  QML_FOREIGN(veltramoor::MoreListController)
  QML_NAMED_ELEMENT(MoreListController)
  QML_UNCREATABLE("made by the application")
};

struct SiteChooserUsed {
  Q_GADGET
  QML_FOREIGN(veltramoor::SiteChooser)
  QML_NAMED_ELEMENT(SiteChooser)
  QML_UNCREATABLE("made by the application")
};

struct SwitchViewControllerUsed {
  Q_GADGET
  QML_FOREIGN(veltramoor::SwitchViewController)
  QML_NAMED_ELEMENT(SwitchViewController)
  QML_UNCREATABLE("made by the application")
};

struct TabBarControllerUsed {
  Q_GADGET
  QML_FOREIGN(veltramoor::TabBarController)
  QML_NAMED_ELEMENT(TabBarController)
  QML_UNCREATABLE("made by the application")
};

struct UIUnderlinedLabelMade {
  Q_GADGET
  QML_FOREIGN(veltramoor::UIUnderlinedLabel)
  QML_NAMED_ELEMENT(UIUnderlinedLabel)
};

}  // namespace veltramoor::qml
