#include "lists/SendingOverlay.h"

#include <QPointer>

#include "shell/ApplicationWindow.h"
#include "shell/SendingTorrentIndicator.h"

namespace veltramoor {

void SendingOverlay::begin() {
  ++count_;
  waits_ = true;
  show(count_ != 1);
}

void SendingOverlay::end() {
  --count_;
  if (count_ < 1) {
    indicator_->hideShowing(showing_);
  } else if (waits_ && indicator_->showing() == showing_) {
    show(count_ >= 2);
  }
}

void SendingOverlay::show(bool plural) {
  indicator_ = &SendingTorrentIndicator::sharedInstance();
  indicator_->setParentView(applicationWindow());
  indicator_->setString(QStringLiteral("Sending %1 torrent%2 to server")
                            .arg(plural ? QString::number(count_) : QString(),
                                 plural ? QStringLiteral("s") : QString()));
  indicator_->setOffset(50);
  indicator_->showLoadingIndicators();
  showing_ = indicator_->showing();
  indicator_->offerGoingOn([self = QPointer(this)] {
    if (self != nullptr) {
      self->waits_ = false;
      self->indicator_->hideShowing(self->showing_);
      emit self->wentOn();
    }
  });
}

}  // namespace veltramoor
