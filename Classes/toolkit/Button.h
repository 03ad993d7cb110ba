// A button's state.
#pragma once

#include <QObject>
#include <QString>

namespace veltramoor {

class Button : public QObject {
  Q_OBJECT
  Q_PROPERTY(QString title READ title WRITE setTitle NOTIFY changed)
  Q_PROPERTY(bool enabled READ isEnabled WRITE setEnabled NOTIFY changed)
  Q_PROPERTY(bool hidden READ isHidden WRITE setHidden NOTIFY changed)
  Q_PROPERTY(QString mark READ mark NOTIFY changed)

 public:
  using QObject::QObject;

  [[nodiscard]] QString title() const { return title_; }
  void setTitle(const QString& title) { assign(title_, title); }
  [[nodiscard]] bool isEnabled() const { return enabled_; }
  void setEnabled(bool enabled) { assign(enabled_, enabled); }
  [[nodiscard]] bool isHidden() const { return hidden_; }
  void setHidden(bool hidden) { assign(hidden_, hidden); }
  /// What the button's choice has changed, in words: shown as a dot. "": nothing.
  [[nodiscard]] QString mark() const { return mark_; }
  void setMark(const QString& mark) { assign(mark_, mark); }

 signals:
  void changed();

 private:
  template <typename Value>
  void assign(Value& field, const Value& value) {
    if (field != value) {
      field = value;
      emit changed();
    }
  }

  QString title_;
  QString mark_;
  bool enabled_ = true;
  bool hidden_ = false;
};

}  // namespace veltramoor
