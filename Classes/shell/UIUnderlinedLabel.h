// A text button that looks like a link.
#pragma once

#include <QFont>
#include <QPainter>
#include <QQuickPaintedItem>
#include <QString>

namespace veltramoor {

/// Draws its title over a white line as long as the title, 5 points above its lower edge. A title
/// that is too wide is shortened.
class UIUnderlinedLabel : public QQuickPaintedItem {
  Q_OBJECT
  Q_PROPERTY(QString title READ title WRITE setTitle NOTIFY changed)
  Q_PROPERTY(int pixelSize READ pixelSize WRITE setPixelSize NOTIFY changed)

 public:
  explicit UIUnderlinedLabel(QQuickItem* parent = nullptr);

  [[nodiscard]] QString title() const { return title_; }
  void setTitle(const QString& title);
  /// Of the title's font; 15 unless set.
  [[nodiscard]] int pixelSize() const { return font_.pixelSize(); }
  void setPixelSize(int size);
  void drawRect(QPainter& painter, const QRectF& bounds) const;
  void paint(QPainter* painter) override { drawRect(*painter, boundingRect()); }

 signals:
  void changed();

 private:
  void resize();

  QString title_;
  QFont font_;
};

}  // namespace veltramoor
