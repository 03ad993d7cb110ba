// A button in the bar over a screen.
#pragma once

#include <QAbstractListModel>
#include <memory>
#include <vector>

#include "toolkit/Button.h"

namespace veltramoor {

/// An icon 50 points wide at `x` points from the start of its container. The left container begins
/// at the bar's left edge, the right one ends at its right edge; both are as wide as their owner
/// says.
class BarButton : public veltramoor::Button {
  Q_OBJECT
  Q_PROPERTY(QString image READ image CONSTANT)
  Q_PROPERTY(QString label READ label CONSTANT)
  Q_PROPERTY(QString name READ name CONSTANT)
  Q_PROPERTY(double x READ x CONSTANT)
  Q_PROPERTY(bool marked READ isMarked NOTIFY markedChanged)

 public:
  static constexpr double kWidth = 50;

  /// `name` identifies the control, `label` names it to assistive technology, `image` is the icon's
  /// file name.
  BarButton(QString name, QString label, QString image, double x = 0)
      : name_(std::move(name)), label_(std::move(label)), image_(std::move(image)), x_(x) {}

  [[nodiscard]] QString name() const { return name_; }
  [[nodiscard]] QString label() const { return label_; }
  [[nodiscard]] QString image() const { return image_; }
  [[nodiscard]] double x() const { return x_; }

  /// Whether a check stands at the icon: what the button does has been done.
  [[nodiscard]] bool isMarked() const { return marked_; }
  void setMarked(bool marked) {
    if (marked != marked_) {
      marked_ = marked;
      emit markedChanged();
    }
  }

  Q_INVOKABLE void click() {
    if (isEnabled() && !isHidden()) {
      emit clicked();
    }
  }

 signals:
  void clicked();
  void markedChanged();

 private:
  QString name_;
  QString label_;
  QString image_;
  double x_;
  bool marked_ = false;
};

/// The buttons of one side of the bar, as rows with the one role "button".
class BarItem : public QAbstractListModel {
  Q_OBJECT
  Q_PROPERTY(double width READ width NOTIFY changed)

 public:
  using QAbstractListModel::QAbstractListModel;

  [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override {
    return parent.isValid() ? 0 : static_cast<int>(buttons_.size());
  }
  [[nodiscard]] QVariant data(const QModelIndex& index, int) const override {
    return checkIndex(index, CheckIndexOption::IndexIsValid)
               ? QVariant::fromValue(buttons_[static_cast<std::size_t>(index.row())].get())
               : QVariant();
  }
  [[nodiscard]] QHash<int, QByteArray> roleNames() const override {
    return {{Qt::UserRole, "button"}};
  }

  /// Width of the container in points; 0 while it is empty.
  [[nodiscard]] double width() const { return width_; }
  /// The button of row `row`, null for none.
  [[nodiscard]] BarButton* button(int row) const {
    return row >= 0 && row < rowCount() ? buttons_[static_cast<std::size_t>(row)].get() : nullptr;
  }
  void set(double width, std::vector<std::unique_ptr<BarButton>> buttons) {
    beginResetModel();
    width_ = width;
    buttons_.swap(buttons);
    endResetModel();
    // What draws the old ones goes a little later, and they after it.
    for (std::unique_ptr<BarButton>& old : buttons) {
      old.release()->deleteLater();
    }
    emit changed();
  }

 signals:
  void changed();

 private:
  std::vector<std::unique_ptr<BarButton>> buttons_;
  double width_ = 0;
};

}  // namespace veltramoor
