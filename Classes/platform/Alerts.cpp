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

void Alerts::showMessage(std::string title, std::string message, std::string button) {
  Alert alert;
  alert.title = std::move(title);
  alert.message = std::move(message);
  alert.buttons = {std::move(button)};
  show(std::move(alert));
}

void Alerts::showMessageAndWait(const std::string& title, const std::string& message) {
  MainThread::performAndWait([&] { showMessage(title, message); });
}

}  // namespace veltramoor
