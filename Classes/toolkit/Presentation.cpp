#include "toolkit/Presentation.h"

#include <utility>

#include "toolkit/SharedInstances.h"

namespace veltramoor {

Presentation& Presentation::sharedInstance() { return SharedInstances::of<Presentation>(); }

void Presentation::present(std::shared_ptr<ViewController> controller) {
  dismiss();
  controller->appear();
  controller_ = std::move(controller);
  emit changed();
  controller_->viewDidAppear();
}

void Presentation::dismiss() {
  if (controller_ == nullptr) {
    return;
  }
  controller_->viewWillDisappear();
  // The screen may be closing itself: it lives on until its views have let go of it.
  const std::shared_ptr<ViewController> closing = std::exchange(controller_, nullptr);
  emit changed();
}

}  // namespace veltramoor
