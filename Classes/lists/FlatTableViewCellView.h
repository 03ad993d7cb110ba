// The view that a flat row is drawn into.
#pragma once

#include <QPointer>
#include <QQuickPaintedItem>

#include "lists/FlatTableViewCell.h"

namespace veltramoor {

/// Paints by asking its cell; has no state of its own.
class FlatTableViewCellView : public QQuickPaintedItem {
  Q_OBJECT
  Q_PROPERTY(veltramoor::FlatTableViewCell* cell READ cell WRITE setCell NOTIFY cellChanged)

 public:
  explicit FlatTableViewCellView(QQuickItem* parent = nullptr);

  [[nodiscard]] FlatTableViewCell* cell() const { return cell_; }
  void setCell(FlatTableViewCell* cell);

  /// Calls `drawContentView` of the cell with the view's bounds.
  void paint(QPainter* painter) override;

  /// Views made since the program started: rows must be reused, not made per torrent.
  [[nodiscard]] static int createdCount();

 signals:
  void cellChanged();

 private:
  QPointer<FlatTableViewCell> cell_;
};

}  // namespace veltramoor
