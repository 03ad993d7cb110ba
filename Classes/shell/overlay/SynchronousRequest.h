// A request that its caller waits for while the window goes on painting.
#pragma once

#include <chrono>
#include <memory>

#include "site/HttpRequest.h"

namespace veltramoor {

/// Whether the person may give up waiting: at any time by the Escape key, and by a tap anywhere
/// once the wait has lasted for the overlay's `patience()`, which it then says.
enum class GivingUp : bool { No, Allowed };

enum class WaitEnd {
  Finished,
  /// By the person, or because the limit passed.
  GivenUp,
  /// The program is ending: nothing is to be shown any more.
  Closing,
};

/// Runs `request->request()` on a worker thread and returns when it is over. Meanwhile the main
/// thread's event loop goes on: screens paint, overlays turn, and what the person does to the
/// window is dropped. Main thread only.
///
/// Unless it finished, the request must not be touched any more: its transfer is stopped.
[[nodiscard]] WaitEnd requestSynchronously(const std::shared_ptr<HttpRequest>& request,
                                           std::chrono::milliseconds limit, GivingUp givingUp);

}  // namespace veltramoor
