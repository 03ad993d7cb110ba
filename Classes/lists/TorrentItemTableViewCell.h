// One torrent's row.
#pragma once

#include <QImage>
#include <QString>

#include "lists/FlatTableViewCell.h"
#include "site/Torrent.h"

namespace veltramoor {

class ImageCache;

/// What a row shows, at fixed places. Filled by the list, which then calls `setNeedsDisplay`.
class TorrentItemTableViewCell : public veltramoor::FlatTableViewCell {
  Q_OBJECT

 public:
  using FlatTableViewCell::FlatTableViewCell;

  /// Takes over what the row says of `torrent`; `images` has the icons by their keys.
  void fill(const Torrent& torrent, ImageCache& images);
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
