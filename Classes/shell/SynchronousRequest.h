// A request that its caller waits for while the window goes on painting.
#pragma once

#include <chrono>
#include <memory>

#include "site/HttpRequest.h"

namespace veltramoor {

/// Whether the person may give up waiting.
enum class WithEscape : bool { No, GivesUp };

/// Runs `request->request()` on a worker thread and returns when it is over. Meanwhile the main
/// thread's event loop goes on: screens paint, overlays turn, and what the person does to the
/// window is dropped, but for the Escape key where it may give up waiting. Main thread only.
///
/// False when it was given up on, by that key, by the program's end, or because `limit` passed
/// first: the request must not be touched then, it ends by itself whenever the transport gives up.
[[nodiscard]] bool requestSynchronously(const std::shared_ptr<HttpRequest>& request,
                                        std::chrono::milliseconds limit, WithEscape escape);

}  // namespace veltramoor
