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
  if (waits_) {
    show(count_ >= 2);
  }
  if (count_ < 1) {
    hide();
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
      self->hide();
      emit self->wentOn();
    }
  });
}

void SendingOverlay::hide() {
  if (indicator_ != nullptr && indicator_->showing() == showing_) {
    indicator_->hideLoadingIndicators();
  }
}

}  // namespace veltramoor
