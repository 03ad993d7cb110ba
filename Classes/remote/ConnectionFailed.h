// What the person is told when the BitTorrent client could not be used.
#pragma once

namespace veltramoor {

/// Shows the alert and returns when it is shown. Worker threads only.
void showConnectionFailed();

}  // namespace veltramoor
