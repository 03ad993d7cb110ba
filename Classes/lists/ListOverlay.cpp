#include "lists/ListOverlay.h"

#include <QPointer>

#include "shell/ApplicationWindow.h"
#include "shell/LoadingIndicator.h"

namespace veltramoor {

ListOverlay::ListOverlay() {
  connect(&LoadingIndicator::sharedInstance(), &LoadingIndicator::hidden, this,
          &ListOverlay::hidden);
}

void ListOverlay::show(const QString& text) {
  LoadingIndicator& loading = LoadingIndicator::sharedInstance();
  loading.setParentView(applicationWindow());
  loading.setString(text);
  loading.setOffset(0);
  loading.showLoadingIndicators();
  showing_ = loading.showing();
}

void ListOverlay::offerGoingOn() {
  LoadingIndicator::sharedInstance().offerGoingOn([self = QPointer(this)] {
    if (self != nullptr) {
      emit self->wentOn();
    }
  });
}

void ListOverlay::hide() { LoadingIndicator::sharedInstance().hideShowing(showing_); }

}  // namespace veltramoor
