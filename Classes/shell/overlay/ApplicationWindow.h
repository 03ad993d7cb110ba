// The application's one window.
#pragma once

#include "toolkit/View.h"

namespace veltramoor {

/// The window as overlays see it; its frame is kept true by what draws the window.
[[nodiscard]] View* applicationWindow();

}  // namespace veltramoor
