#include "toolkit/SegmentedControl.h"

namespace veltramoor {

void SegmentedControl::setSelectedSegment(int segment) {
  if (segment != selected_) {
    selected_ = segment;
    emit changed();
  }
}

void SegmentedControl::setEnabled(int segment, bool enabled) {
  if (enabled_[segment] != enabled) {
    enabled_[segment] = enabled;
    emit changed();
  }
}

void SegmentedControl::choose(int segment) {
  if (segment < 0 || segment >= titles_.size() || !enabled_[segment]) {
    return;
  }
  setSelectedSegment(segment);
  emit valueChanged();
}

}  // namespace veltramoor
