// A table's state.
#pragma once

#include <QObject>
#include <QRectF>

namespace veltramoor {

class TableView : public QObject {
  Q_OBJECT
  Q_PROPERTY(QRectF frame READ frame NOTIFY changed)
  Q_PROPERTY(bool allowsSelection READ allowsSelection NOTIFY changed)
  Q_PROPERTY(bool scrollEnabled READ isScrollEnabled NOTIFY changed)

 public:
  using QObject::QObject;

  [[nodiscard]] QRectF frame() const { return frame_; }
  void setFrame(const QRectF& frame) { assign(frame_, frame); }
  /// Whether rows can be selected; buttons inside rows work regardless.
  [[nodiscard]] bool allowsSelection() const { return allowsSelection_; }
  void setAllowsSelection(bool allows) { assign(allowsSelection_, allows); }
  [[nodiscard]] bool isScrollEnabled() const { return scrollEnabled_; }
  void setScrollEnabled(bool enabled) { assign(scrollEnabled_, enabled); }

  void scrollToTop() { emit scrollToTopRequested(); }

 signals:
  void changed();
  void scrollToTopRequested();

 private:
  template <typename Value>
  void assign(Value& field, const Value& value) {
    if (field != value) {
      field = value;
      emit changed();
    }
  }

  QRectF frame_;
  bool allowsSelection_ = true;
  bool scrollEnabled_ = true;
};

}  // namespace veltramoor
