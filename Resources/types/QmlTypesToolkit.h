// What QML knows of the toolkit's newer notions; see QmlTypes.h.
#pragma once

#include <QtQml/qqmlregistration.h>

#include <QObject>

#include "toolkit/Announcements.h"
#include "toolkit/BarButton.h"
#include "toolkit/InputWatch.h"
#include "toolkit/PopupMenu.h"
#include "toolkit/Presentation.h"
#include "toolkit/Switch.h"
#include "toolkit/TextField.h"

namespace veltramoor::qml {

struct AnnouncementsUsed {
  Q_GADGET
  QML_FOREIGN(veltramoor::Announcements)
  QML_NAMED_ELEMENT(Announcements)
  QML_UNCREATABLE("made by the application")
};

struct BarButtonUsed {
  Q_GADGET
  QML_FOREIGN(veltramoor::BarButton)
  QML_NAMED_ELEMENT(BarButton)
  QML_UNCREATABLE("made by the application")
};

struct BarItemUsed {
  Q_GADGET
  QML_FOREIGN(veltramoor::BarItem)
  QML_NAMED_ELEMENT(BarItem)
  QML_UNCREATABLE("made by the application")
};

struct InputWatchUsed {
  Q_GADGET
  QML_FOREIGN(veltramoor::InputWatch)
  QML_NAMED_ELEMENT(InputWatch)
  QML_UNCREATABLE("made by the application")
};

struct PopupMenuUsed {
  Q_GADGET
  QML_FOREIGN(veltramoor::PopupMenu)
  QML_NAMED_ELEMENT(PopupMenu)
  QML_UNCREATABLE("made by the application")
};

struct PresentationUsed {
  Q_GADGET
  QML_FOREIGN(veltramoor::Presentation)
  QML_NAMED_ELEMENT(Presentation)
  QML_UNCREATABLE("made by the application")
};

struct SwitchUsed {
  Q_GADGET
  QML_FOREIGN(veltramoor::Switch)
  QML_NAMED_ELEMENT(Switch)
  QML_UNCREATABLE("made by the application")
};

struct TextFieldUsed {
  Q_GADGET
  QML_FOREIGN(veltramoor::TextField)
  QML_NAMED_ELEMENT(TextField)
  QML_UNCREATABLE("made by the application")
};

}  // namespace veltramoor::qml
