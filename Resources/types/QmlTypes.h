// What QML knows of the controllers. They are declared here, and not in their own headers, so that
// the floor of controllers needs no QML.
#pragma once

#include <QtQml/qqmlregistration.h>

#include <QObject>
#include <QQmlEngine>

#include "lists/AllListViewController.h"
#include "lists/FlatTableViewCell.h"
#include "lists/FlatTableViewCellView.h"
#include "lists/HeaderView.h"
#include "lists/LoadMoreItemView.h"
#include "lists/TorrentItemTableViewCell.h"
#include "lists/TorrentTableModel.h"
#include "settings/DisplaySettingsViewController.h"
#include "shell/VeltramoorAppDelegate.h"
#include "shell/overlay/LoadingIndicator.h"
#include "shell/overlay/RoundedRectView.h"
#include "shell/overlay/SendingTorrentIndicator.h"
#include "toolkit/AlertView.h"
#include "toolkit/Button.h"
#include "toolkit/Device.h"
#include "toolkit/NavigationController.h"
#include "toolkit/SegmentedControl.h"
#include "toolkit/TabBarItem.h"
#include "toolkit/TableView.h"
#include "toolkit/View.h"
#include "toolkit/ViewController.h"

namespace veltramoor::qml {

// Objects that the application makes and QML only uses.
struct AlertViewUsed {
  Q_GADGET
  QML_FOREIGN(veltramoor::AlertView)
  QML_NAMED_ELEMENT(AlertView)
  QML_UNCREATABLE("made by the application")
};

struct AllListViewControllerUsed {
  Q_GADGET
  QML_FOREIGN(veltramoor::AllListViewController)
  QML_NAMED_ELEMENT(AllListViewController)
  QML_UNCREATABLE("made by the application")
};

struct ButtonUsed {
  Q_GADGET
  QML_FOREIGN(veltramoor::Button)
  QML_NAMED_ELEMENT(Button)
  QML_UNCREATABLE("made by the application")
};

struct DeviceUsed {
  Q_GADGET
  QML_FOREIGN(veltramoor::Device)
  QML_NAMED_ELEMENT(Device)
  QML_UNCREATABLE("made by the application")
};

struct DisplaySettingsViewControllerUsed {
  Q_GADGET
  QML_FOREIGN(veltramoor::DisplaySettingsViewController)
  QML_NAMED_ELEMENT(DisplaySettingsViewController)
  QML_UNCREATABLE("made by the application")
};

struct SegmentedControlUsed {
  Q_GADGET
  QML_FOREIGN(veltramoor::SegmentedControl)
  QML_NAMED_ELEMENT(SegmentedControl)
  QML_UNCREATABLE("made by the application")
};

struct FlatTableViewCellUsed {
  Q_GADGET
  QML_FOREIGN(veltramoor::FlatTableViewCell)
  QML_NAMED_ELEMENT(FlatTableViewCell)
  QML_UNCREATABLE("made by the application")
};

struct HeaderViewUsed {
  Q_GADGET
  QML_FOREIGN(veltramoor::HeaderView)
  QML_NAMED_ELEMENT(HeaderView)
  QML_UNCREATABLE("made by the application")
};

struct LoadMoreItemViewUsed {
  Q_GADGET
  QML_FOREIGN(veltramoor::LoadMoreItemView)
  QML_NAMED_ELEMENT(LoadMoreItemView)
  QML_UNCREATABLE("made by the application")
};

struct LoadingIndicatorUsed {
  Q_GADGET
  QML_FOREIGN(veltramoor::LoadingIndicator)
  QML_NAMED_ELEMENT(LoadingIndicator)
  QML_UNCREATABLE("made by the application")
};

struct NavigationControllerUsed {
  Q_GADGET
  QML_FOREIGN(veltramoor::NavigationController)
  QML_NAMED_ELEMENT(NavigationController)
  QML_UNCREATABLE("made by the application")
};

struct SendingTorrentIndicatorUsed {
  Q_GADGET
  QML_FOREIGN(veltramoor::SendingTorrentIndicator)
  QML_NAMED_ELEMENT(SendingTorrentIndicator)
  QML_UNCREATABLE("made by the application")
};

struct TabBarItemUsed {
  Q_GADGET
  QML_FOREIGN(veltramoor::TabBarItem)
  QML_NAMED_ELEMENT(TabBarItem)
  QML_UNCREATABLE("made by the application")
};

struct TableViewUsed {
  Q_GADGET
  QML_FOREIGN(veltramoor::TableView)
  QML_NAMED_ELEMENT(TableView)
  QML_UNCREATABLE("made by the application")
};

struct TorrentTableModelUsed {
  Q_GADGET
  QML_FOREIGN(veltramoor::TorrentTableModel)
  QML_NAMED_ELEMENT(TorrentTableModel)
  QML_UNCREATABLE("made by the application")
};

struct ViewUsed {
  Q_GADGET
  QML_FOREIGN(veltramoor::View)
  QML_NAMED_ELEMENT(View)
  QML_UNCREATABLE("made by the application")
};

struct ViewControllerUsed {
  Q_GADGET
  QML_FOREIGN(veltramoor::ViewController)
  QML_NAMED_ELEMENT(ViewController)
  QML_UNCREATABLE("made by the application")
};

struct ViewControllerStackUsed {
  Q_GADGET
  QML_FOREIGN(veltramoor::ViewControllerStack)
  QML_NAMED_ELEMENT(ViewControllerStack)
  QML_UNCREATABLE("made by the application")
};

// Items and cells that views make.
struct FlatTableViewCellViewMade {
  Q_GADGET
  QML_FOREIGN(veltramoor::FlatTableViewCellView)
  QML_NAMED_ELEMENT(FlatTableViewCellView)
};

struct RoundedRectViewMade {
  Q_GADGET
  QML_FOREIGN(veltramoor::RoundedRectView)
  QML_NAMED_ELEMENT(RoundedRectView)
};

struct TorrentItemTableViewCellMade {
  Q_GADGET
  QML_FOREIGN(veltramoor::TorrentItemTableViewCell)
  QML_NAMED_ELEMENT(TorrentItemTableViewCell)
};

struct GradientUsed {
  Q_GADGET
  QML_FOREIGN(veltramoor::Gradient)
  QML_VALUE_TYPE(headerGradient)
};

// The application's delegate, as the singleton `App`. Owned by main.
struct AppSingleton {
  Q_GADGET
  QML_FOREIGN(veltramoor::VeltramoorAppDelegate)
  QML_NAMED_ELEMENT(App)
  QML_SINGLETON

 public:
  static VeltramoorAppDelegate* create(QQmlEngine*, QJSEngine*) {
    VeltramoorAppDelegate* delegate = &VeltramoorAppDelegate::sharedInstance();
    QJSEngine::setObjectOwnership(delegate, QJSEngine::CppOwnership);
    return delegate;
  }
};

}  // namespace veltramoor::qml
