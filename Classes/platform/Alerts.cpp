#include "platform/Alerts.h"

#include <cassert>
#include <utility>

#include "platform/MainThread.h"

namespace veltramoor {
namespace {

AlertPresenter* currentPresenter = nullptr;

}  // namespace

void Alerts::setPresenter(AlertPresenter* presenter) {
  assert(MainThread::isCurrent());
  currentPresenter = presenter;
}

void Alerts::show(Alert alert) {
  assert(MainThread::isCurrent());
  assert(!alert.buttons.empty());
  if (currentPresenter != nullptr) {
    currentPresenter->show(std::move(alert));
  }
}

}  // namespace veltramoor
