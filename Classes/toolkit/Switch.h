// An on-off switch.
#pragma once

#include <QObject>

namespace veltramoor {

class Switch : public QObject {
  Q_OBJECT
  Q_PROPERTY(bool on READ isOn NOTIFY changed)

 public:
  using QObject::QObject;

  [[nodiscard]] bool isOn() const { return on_; }
  /// Changes what is shown without telling anybody that the person did it.
  void setOn(bool on) {
    if (on != on_) {
      on_ = on;
      emit changed();
    }
  }

  /// The person's tap.
  Q_INVOKABLE void toggle() {
    setOn(!on_);
    emit valueChanged();
  }

 signals:
  void changed();
  void valueChanged();

 private:
  bool on_ = false;
};

}  // namespace veltramoor
