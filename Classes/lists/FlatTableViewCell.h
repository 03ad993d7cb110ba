// A table row that draws itself in one pass.
#pragma once

#include <QObject>
#include <QPainter>
#include <QRectF>

namespace veltramoor {

/// Base of rows without subviews: one view asks its cell to draw everything.
class FlatTableViewCell : public QObject {
  Q_OBJECT
  Q_PROPERTY(bool highlighted READ isHighlighted WRITE setHighlighted NOTIFY needsDisplay)
  Q_PROPERTY(bool selected READ isSelected WRITE setSelected NOTIFY needsDisplay)

 public:
  using QObject::QObject;

  /// Draws the row into `rect`, in points from the row's top left.
  virtual void drawContentView(QPainter& painter, const QRectF& rect) = 0;

  [[nodiscard]] bool isHighlighted() const { return highlighted_; }
  void setHighlighted(bool highlighted);
  [[nodiscard]] bool isSelected() const { return selected_; }
  void setSelected(bool selected);

  /// Has the row drawn anew.
  void setNeedsDisplay() { emit needsDisplay(); }

 signals:
  void needsDisplay();

 private:
  bool highlighted_ = false;
  bool selected_ = false;
};

}  // namespace veltramoor
