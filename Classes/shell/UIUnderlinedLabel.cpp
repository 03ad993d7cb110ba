#include "shell/UIUnderlinedLabel.h"

#include <QFontMetricsF>
#include <QPen>

namespace veltramoor {

UIUnderlinedLabel::UIUnderlinedLabel(QQuickItem* parent)
    : QQuickPaintedItem(parent), font_(QStringLiteral("Liberation Sans")) {
  font_.setPixelSize(15);
}

void UIUnderlinedLabel::setTitle(const QString& title) {
  if (title == title_) {
    return;
  }
  title_ = title;
  resize();
}

void UIUnderlinedLabel::setPixelSize(int size) {
  if (size == font_.pixelSize()) {
    return;
  }
  font_.setPixelSize(size);
  resize();
}

void UIUnderlinedLabel::resize() {
  const QFontMetricsF metrics(font_);
  setImplicitSize(metrics.horizontalAdvance(title_), metrics.height() + 10);
  emit changed();
  update();
}

void UIUnderlinedLabel::drawRect(QPainter& painter, const QRectF& bounds) const {
  painter.setCompositionMode(QPainter::CompositionMode_Clear);
  painter.fillRect(QRectF(0, 0, 100, 100), Qt::transparent);
  painter.setCompositionMode(QPainter::CompositionMode_SourceOver);
  painter.setPen(QPen(Qt::white, 1));
  const double y = bounds.height() - 5;
  const QFontMetricsF metrics(font_);
  // The bounds may be the title's own width, rounded.
  const QString title = metrics.elidedText(title_, Qt::ElideRight, bounds.width() + 1);
  painter.drawLine(QPointF(0, y), QPointF(metrics.horizontalAdvance(title), y));
  painter.setFont(font_);
  painter.drawText(bounds, Qt::AlignLeft | Qt::AlignVCenter, title);
}

}  // namespace veltramoor
