#include "lists/TorrentItemTableViewCell.h"

#include <QFont>
#include <QFontMetricsF>

#include "lists/ImageCache.h"
#include "toolkit/Device.h"
#include "toolkit/SharedInstances.h"

namespace veltramoor {
namespace {

constexpr double kIconTop = 20;
constexpr double kIconSide = 10;
constexpr double kUpLeft = 214;
constexpr double kDownLeft = 261;
constexpr double kLineTop = 20;
constexpr double kNameLeft = 40;
// What the button at the row's end takes, and the width of a window from which a row is a wide one.
constexpr double kSendButton = 44;
constexpr double kWide = 480;

// Liberation Sans has Arial's metrics; made once for all rows.
struct Fonts {
  QFont name = made(12, true);
  QFont wait = made(19, true);
  QFont small = made(10, false);

  static QFont made(int pixels, bool bold) {
    QFont font(QStringLiteral("Liberation Sans"));
    font.setPixelSize(pixels);
    font.setBold(bold);
    return font;
  }
};

const Fonts& fonts() { return SharedInstances::of<Fonts>(); }

void drawText(QPainter& painter, const QFont& font, double x, double y, const QString& text) {
  painter.setFont(font);
  painter.drawText(QPointF(x, y + QFontMetricsF(font).ascent()), text);
}

void drawWrapped(QPainter& painter, const QFont& font, const QRectF& rect, const QString& text) {
  painter.setFont(font);
  painter.drawText(rect, Qt::TextWordWrap | Qt::TextDontClip, text);
}

void drawCount(QPainter& painter, double iconLeft, const QString& text) {
  const double width = QFontMetricsF(fonts().small).horizontalAdvance(text);
  drawText(painter, fonts().small, iconLeft - width - 4, kLineTop, text);
}

}  // namespace

void TorrentItemTableViewCell::fill(const Torrent& torrent, ImageCache& images) {
  upImg = images.image(QStringLiteral("up.jpg"));
  downImg = images.image(QStringLiteral("down.jpg"));
  nameLbl = QString::fromStdString(torrent.name);
  dateLbl = QString::fromStdString(torrent.date);
  upLbl = QString::fromStdString(torrent.up);
  downLbl = QString::fromStdString(torrent.down);
  sizeLbl = QString::fromStdString(torrent.size);
  typeImg = images.image(QString::fromStdString(torrent.type));
  downloadedImg = torrent.isDownloaded ? images.image(QStringLiteral("downloaded.png")) : QImage();
  waitLbl = QString::fromStdString(torrent.wait.value_or(""));
}

void TorrentItemTableViewCell::drawContentView(QPainter& painter, const QRectF& rect) {
  const bool lit = isHighlighted() || isSelected();
  const QColor textColour = lit ? QColor(Qt::white) : QColor::fromRgbF(0.8F, 0.8F, 0.8F);
  if (!lit) {
    painter.fillRect(rect, QColor(0x22, 0x22, 0x22));
  }
  painter.setRenderHint(QPainter::SmoothPixmapTransform);
  painter.setPen(textColour);

  painter.setOpacity(lit ? 0.5 : 1.0);
  painter.drawImage(QRectF(0, 0, 33, 33), typeImg);
  painter.setOpacity(1.0);
  painter.drawImage(QRectF(kUpLeft, kIconTop, kIconSide, kIconSide), upImg);
  painter.drawImage(QRectF(kDownLeft, kIconTop, kIconSide, kIconSide), downImg);
  // A line beneath the date.
  if (!downloadedImg.isNull()) {
    painter.drawImage(QRectF(48, 15, 24, 19), downloadedImg);
  }

  if (!waitLbl.isEmpty()) {
    drawWrapped(painter, fonts().small, QRectF(10, 40, 30, rect.height()), waitLbl);
  }
  // The whole width up to the send button, where a phone's would leave half of the row empty.
  const Device& device = Device::sharedInstance();
  const bool wide = device.isPad() || device.screenSize().width() >= kWide;
  const double nameWidth = wide ? rect.width() - kNameLeft - kSendButton : 230;
  const QString name = QFontMetricsF(fonts().name).elidedText(nameLbl, Qt::ElideRight, nameWidth);
  drawText(painter, fonts().name, kNameLeft, 5, name);
  drawText(painter, fonts().small, 40, kLineTop, dateLbl);
  drawText(painter, fonts().small, 120, kLineTop, sizeLbl);
  drawCount(painter, kUpLeft, upLbl);
  drawCount(painter, kDownLeft, downLbl);
  if (!waitLbl.isEmpty()) {
    painter.setPen(Qt::red);
    drawWrapped(painter, fonts().wait, QRectF(50, 17, 50, rect.height()), waitLbl);
  }
}

}  // namespace veltramoor
