// A place on the screen that overlays are centred on.
#pragma once

#include <QObject>
#include <QRectF>

namespace veltramoor {

/// State of a view: its frame in points. What draws it keeps the frame true.
class View : public QObject {
  Q_OBJECT
  Q_PROPERTY(QRectF frame READ frame WRITE setFrame NOTIFY frameChanged)

 public:
  using QObject::QObject;

  [[nodiscard]] QRectF frame() const { return frame_; }
  void setFrame(const QRectF& frame) {
    if (frame != frame_) {
      frame_ = frame;
      emit frameChanged();
    }
  }

 signals:
  void frameChanged();

 private:
  QRectF frame_;
};

}  // namespace veltramoor
