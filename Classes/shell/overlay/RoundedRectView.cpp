#include "shell/overlay/RoundedRectView.h"

#include <QPen>
#include <algorithm>

namespace veltramoor {

RoundedRectView::RoundedRectView(QQuickItem* parent) : QQuickPaintedItem(parent) {
  setAntialiasing(true);
  connect(this, &RoundedRectView::changed, this, [this] { update(); });
}

double RoundedRectView::radiusIn(const QRectF& bounds) const {
  return std::min({cornerRadius_, bounds.width() / 2, bounds.height() / 2});
}

void RoundedRectView::drawRect(QPainter& painter, const QRectF& bounds) const {
  const double radius = radiusIn(bounds);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(strokeWidth_ > 0 ? QPen(strokeColor_, strokeWidth_) : QPen(Qt::NoPen));
  painter.setBrush(rectColor_);
  painter.drawRoundedRect(bounds, radius, radius);
}

}  // namespace veltramoor
