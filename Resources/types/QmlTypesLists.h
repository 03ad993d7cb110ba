// What QML knows of the lists beside AllListViewController; see QmlTypes.h.
#pragma once

#include <QtQml/qqmlregistration.h>

#include <QObject>

#include "lists/HistoryListViewController.h"
#include "lists/HistoryTableModel.h"

namespace veltramoor::qml {

struct HistoryListViewControllerUsed {
  Q_GADGET
  QML_FOREIGN(veltramoor::HistoryListViewController)
  QML_NAMED_ELEMENT(HistoryListViewController)
  QML_UNCREATABLE("made by the application")
};

struct HistoryTableModelUsed {
  Q_GADGET
  QML_FOREIGN(veltramoor::HistoryTableModel)
  QML_NAMED_ELEMENT(HistoryTableModel)
  QML_UNCREATABLE("made by the application")
};

}  // namespace veltramoor::qml
