// What can be done with a row of a torrent list.
#pragma once

#include <QObject>
#include <QRectF>

namespace veltramoor {

class OpeningList;

/// The menu of each row. Main thread only.
class TorrentMenu : public QObject {
  Q_OBJECT

 public:
  /// `list`, which this belongs to, has the rows and sends them.
  explicit TorrentMenu(OpeningList& list) : list_(list) {}

  /// Opens the menu of row `row` beside that part of the window; nothing for a row without a
  /// torrent. What is chosen is done with the torrent that the row held then.
  Q_INVOKABLE void open(int row, const QRectF& beside, bool byKey);
  /// Copies what a send of row `row` would hand on; nothing when there is no such link.
  Q_INVOKABLE void copyMagnetLink(int row) const;

 private:
  OpeningList& list_;
};

}  // namespace veltramoor
