// A line of text that the person types.
#pragma once

#include <QObject>
#include <QString>

namespace veltramoor {

/// State of a text field. Editing begins and ends with the focus; what draws the field reports both
/// and follows the requests. Main thread only.
class TextField : public QObject {
  Q_OBJECT
  Q_PROPERTY(QString text READ text WRITE setText NOTIFY changed)
  Q_PROPERTY(bool enabled READ isEnabled NOTIFY changed)
  Q_PROPERTY(double alpha READ alpha NOTIFY changed)
  Q_PROPERTY(bool editing READ isEditing NOTIFY editingChanged)

 public:
  using QObject::QObject;

  [[nodiscard]] QString text() const { return text_; }
  void setText(const QString& text) { assign(text_, text); }
  [[nodiscard]] bool isEnabled() const { return enabled_; }
  void setEnabled(bool enabled) { assign(enabled_, enabled); }
  /// Opacity from 0 to 1.
  [[nodiscard]] double alpha() const { return alpha_; }
  void setAlpha(double alpha) { assign(alpha_, alpha); }

  /// Whether the field has the focus, and with it the keyboard.
  [[nodiscard]] bool isEditing() const { return editing_; }
  void becomeFirstResponder() {
    if (enabled_ && !editing_) {
      setEditing(true);
    }
  }
  void resignFirstResponder() {
    if (editing_) {
      setEditing(false);
    }
  }

  /// The focus came or went at the screen.
  Q_INVOKABLE void focusChanged(bool focused) {
    if (focused != editing_) {
      setEditing(focused);
    }
  }
  /// The return key.
  Q_INVOKABLE void returnPressed() { emit shouldReturn(); }

 signals:
  void changed();
  void editingChanged();
  void didBeginEditing();
  void didEndEditing();
  void shouldReturn();

 private:
  void setEditing(bool editing) {
    editing_ = editing;
    emit editingChanged();
    if (editing) {
      emit didBeginEditing();
    } else {
      emit didEndEditing();
    }
  }

  template <typename Value>
  void assign(Value& field, const Value& value) {
    if (field != value) {
      field = value;
      emit changed();
    }
  }

  QString text_;
  bool enabled_ = true;
  double alpha_ = 1;
  bool editing_ = false;
};

}  // namespace veltramoor
