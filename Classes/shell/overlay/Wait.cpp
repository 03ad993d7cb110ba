#include "shell/overlay/Wait.h"

namespace veltramoor {

Wait::Wait() : Wait(LoadingIndicator::current()) {}

Wait::Wait(LoadingIndicator& overlay) : overlay_(&overlay) {
  connect(overlay_, &LoadingIndicator::hidden, this, &Wait::overlayHidden);
}

Wait::~Wait() {
  // Nobody is told by what is half gone.
  disconnect();
  end();
}

void Wait::begin(View* view, const QString& text, int offset) {
  overlay_->setParentView(view);
  overlay_->setString(text);
  overlay_->setOffset(offset);
  overlay_->showLoadingIndicators();
  takeOver();
}

void Wait::takeOver() { overlay_->setWait(this); }

void Wait::offerGoingOn() {
  overlay_->offerGoingOn([self = QPointer(this)] {
    if (self != nullptr) {
      emit self->wentOn();
    }
  });
}

void Wait::end() {
  if (isShown()) {
    overlay_->hideLoadingIndicators();
  }
}

bool Wait::isShown() const {
  return overlay_ != nullptr && overlay_->isShown() && overlay_->wait() == this;
}

}  // namespace veltramoor
