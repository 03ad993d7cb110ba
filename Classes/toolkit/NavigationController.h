// A stack of screens.
#pragma once

#include <QAbstractListModel>
#include <memory>
#include <vector>

#include "toolkit/ViewController.h"

namespace veltramoor {

/// The screens of a stack from the root up, as rows with the one role "controller": a view keeps
/// one item for each, so that a covered screen keeps its state.
class ViewControllerStack : public QAbstractListModel {
  Q_OBJECT
  Q_PROPERTY(int count READ count NOTIFY countChanged)

 public:
  enum Role { ControllerRole = Qt::UserRole };

  [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
  [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
  [[nodiscard]] QHash<int, QByteArray> roleNames() const override;

  [[nodiscard]] const std::vector<std::shared_ptr<ViewController>>& controllers() const {
    return controllers_;
  }
  void push(std::shared_ptr<ViewController> controller);
  std::shared_ptr<ViewController> pop();
  /// Shows these instead.
  void assign(std::vector<std::shared_ptr<ViewController>> controllers);
  [[nodiscard]] int count() const { return rowCount(); }

 signals:
  void countChanged();

 private:
  std::vector<std::shared_ptr<ViewController>> controllers_;
};

/// Shows the topmost screen of its stack, with a bar that leads back. While it is not on show
/// itself, its screens change without appearing or disappearing.
class NavigationController : public veltramoor::ViewController {
  Q_OBJECT
  Q_PROPERTY(veltramoor::ViewControllerStack* stack READ stack CONSTANT)
  Q_PROPERTY(
      veltramoor::ViewController* topViewController READ topViewController NOTIFY stackChanged)
  Q_PROPERTY(int depth READ depth NOTIFY stackChanged)
  Q_PROPERTY(bool blackBar READ hasBlackBar CONSTANT)
  Q_PROPERTY(bool navigationBarHidden READ isNavigationBarHidden NOTIFY navigationBarHiddenChanged)

 public:
  explicit NavigationController(std::shared_ptr<ViewController> root);
  ~NavigationController() override;

  [[nodiscard]] ViewControllerStack* stack() { return &stack_; }
  /// Its first screen's.
  [[nodiscard]] TabBarItem* tabBarItem() override;
  [[nodiscard]] ViewController* topViewController() const;
  /// Between its appearance and its disappearance.
  [[nodiscard]] bool isVisible() const { return visible_; }
  [[nodiscard]] int depth() const { return static_cast<int>(stack_.controllers().size()); }

  void pushViewController(const std::shared_ptr<ViewController>& controller);
  /// Removes the topmost screen; the root stays.
  Q_INVOKABLE void popViewController();
  void popToRootViewController();
  /// Leaves a pushed screen; the root is asked.
  bool escape() override;
  bool perform(KeyCommand command) override { return topViewController()->perform(command); }

  enum class BarStyle { Default, Black };
  /// To be set before the bar is drawn.
  void setBarStyle(BarStyle style) { barStyle_ = style; }
  [[nodiscard]] bool hasBlackBar() const { return barStyle_ == BarStyle::Black; }

  [[nodiscard]] bool isNavigationBarHidden() const { return navigationBarHidden_; }
  void setNavigationBarHidden(bool hidden);

  void viewWillAppear() override;
  void viewDidAppear() override;
  void viewWillDisappear() override;
  [[nodiscard]] bool hasBackgroundWork() const override;

 signals:
  void stackChanged();
  void navigationBarHiddenChanged();

 private:
  ViewControllerStack stack_;
  BarStyle barStyle_ = BarStyle::Default;
  bool navigationBarHidden_ = false;
  bool visible_ = false;

  void leaveTop();
  void showTop();
};

}  // namespace veltramoor
