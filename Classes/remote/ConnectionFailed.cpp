#include "remote/ConnectionFailed.h"

#include "platform/Alerts.h"

namespace veltramoor {

void showConnectionFailed() {
  Alerts::showMessageAndWait(
      "Connection with server failed.",
      "Please make sure you have correctly setup your remote download settings.");
}

}  // namespace veltramoor
