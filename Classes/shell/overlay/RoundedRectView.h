// A box with round corners.
#pragma once

#include <QColor>
#include <QPainter>
#include <QQuickPaintedItem>
#include <QRectF>

namespace veltramoor {

/// Draws its fill and outline; what lies behind its corners shows through.
class RoundedRectView : public QQuickPaintedItem {
  Q_OBJECT
  Q_PROPERTY(QColor strokeColor MEMBER strokeColor_ NOTIFY changed)
  Q_PROPERTY(QColor rectColor MEMBER rectColor_ NOTIFY changed)
  Q_PROPERTY(double strokeWidth MEMBER strokeWidth_ NOTIFY changed)
  Q_PROPERTY(double cornerRadius MEMBER cornerRadius_ NOTIFY changed)

 public:
  explicit RoundedRectView(QQuickItem* parent = nullptr);

  /// Neither can be changed after creation: the background is clear and stays so.
  void setFillColor(const QColor&) {}
  void setOpaquePainting(bool) {}

  /// The radius used for a box of that size: never more than half its shorter side.
  [[nodiscard]] double radiusIn(const QRectF& bounds) const;
  /// Fills and strokes the box along `bounds` in one operation.
  void drawRect(QPainter& painter, const QRectF& bounds) const;
  void paint(QPainter* painter) override { drawRect(*painter, boundingRect()); }

 signals:
  void changed();

 private:
  QColor strokeColor_ = Qt::white;
  QColor rectColor_ = Qt::white;
  double strokeWidth_ = 1.0;
  double cornerRadius_ = 30.0;
};

}  // namespace veltramoor
