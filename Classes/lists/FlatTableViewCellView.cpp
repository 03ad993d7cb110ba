#include "lists/FlatTableViewCellView.h"

namespace veltramoor {
namespace {
int created = 0;
}

FlatTableViewCellView::FlatTableViewCellView(QQuickItem* parent) : QQuickPaintedItem(parent) {
  ++created;
}

int FlatTableViewCellView::createdCount() { return created; }

void FlatTableViewCellView::setCell(FlatTableViewCell* cell) {
  if (cell == cell_) {
    return;
  }
  if (cell_ != nullptr) {
    disconnect(cell_, nullptr, this, nullptr);
  }
  cell_ = cell;
  if (cell_ != nullptr) {
    connect(cell_, &FlatTableViewCell::needsDisplay, this, [this] { update(); });
  }
  update();
  emit cellChanged();
}

void FlatTableViewCellView::paint(QPainter* painter) {
  if (cell_ != nullptr) {
    cell_->drawContentView(*painter, boundingRect());
  }
}

}  // namespace veltramoor
