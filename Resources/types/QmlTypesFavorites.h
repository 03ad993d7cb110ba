// What QML knows of the favourites' screens; see QmlTypes.h.
#pragma once

#include <QtQml/qqmlregistration.h>

#include <QObject>

#include "lists/EditFavoriteListViewController.h"
#include "lists/FavoriteComposeViewController.h"
#include "lists/FavoriteFiltersModel.h"
#include "lists/FavoriteListViewController.h"

namespace veltramoor::qml {

struct EditFavoriteListViewControllerUsed {
  Q_GADGET
  QML_FOREIGN(veltramoor::EditFavoriteListViewController)
  QML_NAMED_ELEMENT(EditFavoriteListViewController)
  QML_UNCREATABLE("made by the application")
};

struct FavoriteComposeViewControllerUsed {
  Q_GADGET
  QML_FOREIGN(veltramoor::FavoriteComposeViewController)
  QML_NAMED_ELEMENT(FavoriteComposeViewController)
  QML_UNCREATABLE("made by the application")
};

struct FavoriteFiltersModelUsed {
  Q_GADGET
  QML_FOREIGN(veltramoor::FavoriteFiltersModel)
  QML_NAMED_ELEMENT(FavoriteFiltersModel)
  QML_UNCREATABLE("made by the application")
};

struct FavoriteListViewControllerUsed {
  Q_GADGET
  QML_FOREIGN(veltramoor::FavoriteListViewController)
  QML_NAMED_ELEMENT(FavoriteListViewController)
  QML_UNCREATABLE("made by the application")
};

}  // namespace veltramoor::qml
