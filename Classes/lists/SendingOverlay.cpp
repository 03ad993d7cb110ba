#include "lists/SendingOverlay.h"

#include "shell/ApplicationWindow.h"
#include "shell/SendingTorrentIndicator.h"

namespace veltramoor {

std::stop_token SendingOverlay::begin() {
  if (stop_.stop_requested()) {
    stop_ = std::stop_source();
  }
  ++count_;
  show(count_ != 1);
  return stop_.get_token();
}

void SendingOverlay::end() {
  --count_;
  show(count_ >= 2);
  if (count_ < 1) {
    indicator_->hideLoadingIndicators();
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
  indicator_->offerEnd([stop = stop_]() mutable { stop.request_stop(); });
}

}  // namespace veltramoor
