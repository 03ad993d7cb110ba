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
  painter.drawLine(QPointF(0, y), QPointF(QFontMetricsF(font_).horizontalAdvance(title_), y));
  painter.setFont(font_);
  painter.drawText(bounds, Qt::AlignLeft | Qt::AlignVCenter, title_);
}

}  // namespace veltramoor
