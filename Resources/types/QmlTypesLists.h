// What QML knows of the lists beside AllListViewController; see QmlTypes.h.
#pragma once

#include <QtQml/qqmlregistration.h>

#include <QObject>

#include "lists/HistoryListViewController.h"
#include "lists/HistoryTableModel.h"
#include "lists/RemovalOffer.h"
#include "lists/TorrentMenu.h"

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

struct RemovalOfferUsed {
  Q_GADGET
  QML_FOREIGN(veltramoor::RemovalOffer)
  QML_NAMED_ELEMENT(RemovalOffer)
  QML_UNCREATABLE("belongs to its screen")
};

struct TorrentMenuUsed {
  Q_GADGET
  QML_FOREIGN(veltramoor::TorrentMenu)
  QML_NAMED_ELEMENT(TorrentMenu)
  QML_UNCREATABLE("belongs to its list")
};

}  // namespace veltramoor::qml
