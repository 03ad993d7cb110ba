// The size that the window had when it was last closed.
#pragma once

#include <QSize>
#include <optional>

namespace veltramoor {

/// In points, from the state file; absent before the first end, and for what is no size that a
/// window may have (320 x 300 to 16384 x 16384).
[[nodiscard]] std::optional<QSize> storedWindowSize();
/// Stores `size` unless it is the one stored already.
void storeWindowSize(QSize size);

}  // namespace veltramoor
