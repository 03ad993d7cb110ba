#include "lists/RemovalOffer.h"

#include <utility>

namespace veltramoor {

RemovalOffer::RemovalOffer(PutBack putBack) : putBack_(std::move(putBack)) {
  timer_.setSingleShot(true);
  timer_.setInterval(kDuration);
  connect(&timer_, &QTimer::timeout, this, &RemovalOffer::changed);
}

void RemovalOffer::make(ArrayPlace place, std::string entry, const QString& name) {
  // A line that comes anew is read aloud anew, as it reads when it comes.
  end();
  place_ = std::move(place);
  entry_ = std::move(entry);
  text_ = tr("Removed %1").arg(name);
  emit textChanged();
  timer_.start();
  emit changed();
}

void RemovalOffer::end() {
  if (isOpen()) {
    timer_.stop();
    emit changed();
  }
}

void RemovalOffer::undo() {
  if (!isOpen()) {
    return;
  }
  if (!putBack_(place_, entry_)) {
    timer_.start();
    return;
  }
  end();
  emit undone();
}

}  // namespace veltramoor
