// One torrent's row.
#pragma once

#include <QImage>
#include <QString>

#include "lists/FlatTableViewCell.h"

namespace veltramoor {

/// What a row shows, at fixed places. Filled by the list, which then calls `setNeedsDisplay`.
class TorrentItemTableViewCell : public veltramoor::FlatTableViewCell {
  Q_OBJECT

 public:
  using FlatTableViewCell::FlatTableViewCell;

  void drawContentView(QPainter& painter, const QRectF& rect) override;

  QString nameLbl;
  QString dateLbl;
  QString upLbl;
  QString downLbl;
  QString sizeLbl;
  QString waitLbl;
  QImage typeImg;
  QImage upImg;
  QImage downImg;
  /// Never drawn.
  QImage newImg;
  /// Null unless the torrent has been sent.
  QImage downloadedImg;
};

}  // namespace veltramoor
