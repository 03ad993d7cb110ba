// A text button that looks like a link.
#pragma once

#include <QFont>
#include <QPainter>
#include <QQuickPaintedItem>
#include <QString>

namespace veltramoor {

/// Draws its title over a white line as long as the title, 5 points above its lower edge.
class UIUnderlinedLabel : public QQuickPaintedItem {
  Q_OBJECT
  Q_PROPERTY(QString title READ title WRITE setTitle NOTIFY changed)

 public:
  explicit UIUnderlinedLabel(QQuickItem* parent = nullptr);

  [[nodiscard]] QString title() const { return title_; }
  void setTitle(const QString& title);
  void drawRect(QPainter& painter, const QRectF& bounds) const;
  void paint(QPainter* painter) override { drawRect(*painter, boundingRect()); }

 signals:
  void changed();

 private:
  QString title_;
  QFont font_;
};

}  // namespace veltramoor
