// A number between two ends.
#pragma once

#include <QObject>
#include <algorithm>

namespace veltramoor {

/// A thumb on a track. Dragging tells of each move and, once, of the release.
class Slider : public QObject {
  Q_OBJECT
  Q_PROPERTY(double minimum READ minimum CONSTANT)
  Q_PROPERTY(double maximum READ maximum CONSTANT)
  Q_PROPERTY(double value READ value NOTIFY changed)

 public:
  Slider(double minimum, double maximum) : minimum_(minimum), maximum_(maximum), value_(minimum) {}

  [[nodiscard]] double minimum() const { return minimum_; }
  [[nodiscard]] double maximum() const { return maximum_; }
  [[nodiscard]] double value() const { return value_; }
  /// Changes what is shown, within the ends, without telling anybody that the person did it. What
  /// is no number counts as the minimum.
  void setValue(double value) {
    const double within = value >= minimum_ ? std::min(value, maximum_) : minimum_;
    if (within < value_ || within > value_) {
      value_ = within;
      emit changed();
    }
  }

  /// The person's drag, and its end.
  Q_INVOKABLE void moveTo(double value) {
    if (!dragged_) {
      dragged_ = true;
      atRest_ = value_;
    }
    setValue(value);
    emit moved();
  }
  Q_INVOKABLE void release() {
    dragged_ = false;
    emit released();
  }
  /// Ends a drag as if it had not begun.
  Q_INVOKABLE void takeBack() {
    if (dragged_) {
      dragged_ = false;
      setValue(atRest_);
      emit moved();
    }
  }

 signals:
  void changed();
  void moved();
  void released();

 private:
  double minimum_;
  double maximum_;
  double value_;
  bool dragged_ = false;
  double atRest_ = 0;
};

}  // namespace veltramoor
