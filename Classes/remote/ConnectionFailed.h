// What the person is told when the BitTorrent client could not be used.
#pragma once

#include <functional>

namespace veltramoor {

/// Shows the alert and returns when it is shown; `closed` runs on the main thread once the person
/// has closed it. Worker threads only.
void showConnectionFailed(std::function<void()> closed = {});

}  // namespace veltramoor
