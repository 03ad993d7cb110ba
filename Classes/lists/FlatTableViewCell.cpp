#include "lists/FlatTableViewCell.h"

namespace veltramoor {

void FlatTableViewCell::setHighlighted(bool highlighted) {
  if (highlighted != highlighted_) {
    highlighted_ = highlighted;
    setNeedsDisplay();
  }
}

void FlatTableViewCell::setSelected(bool selected) {
  if (selected != selected_) {
    selected_ = selected;
    setNeedsDisplay();
  }
}

}  // namespace veltramoor
