#include "remote/ConnectionFailed.h"

#include <utility>

#include "platform/Alerts.h"
#include "platform/MainThread.h"

namespace veltramoor {

void showConnectionFailed(std::function<void()> closed) {
  MainThread::performAndWait([&closed] {
    Alert alert;
    alert.title = "Connection with server failed.";
    alert.message = "Please make sure you have correctly setup your remote download settings.";
    alert.buttons = {"Ok"};
    if (closed) {
      alert.clicked = [closed = std::move(closed)](int) { closed(); };
    }
    Alerts::show(std::move(alert));
  });
}

}  // namespace veltramoor
