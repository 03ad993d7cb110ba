// What QML knows of the settings screens; see QmlTypes.h.
#pragma once

#include <QtQml/qqmlregistration.h>

#include <QObject>

#include "remote/screens/DiagnosisModel.h"
#include "remote/screens/ServerSettingsViewController.h"
#include "settings/DisplaySettingsParts.h"
#include "toolkit/Slider.h"

namespace veltramoor::qml {

struct DisplaySettingsPartUsed {
  Q_GADGET
  QML_FOREIGN(veltramoor::DisplaySettingsPart)
  QML_NAMED_ELEMENT(DisplaySettingsPart)
  QML_UNCREATABLE("made by the application")
};

struct DisplaySettingsPartsUsed {
  Q_GADGET
  QML_FOREIGN(veltramoor::DisplaySettingsParts)
  QML_NAMED_ELEMENT(DisplaySettingsParts)
  QML_UNCREATABLE("made by the application")
};

struct DiagnosisModelUsed {
  Q_GADGET
  QML_FOREIGN(veltramoor::DiagnosisModel)
  QML_NAMED_ELEMENT(DiagnosisModel)
  QML_UNCREATABLE("belongs to its screen")
};

struct ServerSettingsViewControllerUsed {
  Q_GADGET
  QML_FOREIGN(veltramoor::ServerSettingsViewController)
  QML_NAMED_ELEMENT(ServerSettingsViewController)
  QML_UNCREATABLE("made by the application")
};

struct SliderUsed {
  Q_GADGET
  QML_FOREIGN(veltramoor::Slider)
  QML_NAMED_ELEMENT(Slider)
  QML_UNCREATABLE("made by the application")
};

}  // namespace veltramoor::qml
