// Text from outside as one harmless line.
#pragma once

#include <string>
#include <string_view>

namespace veltramoor {

/// `text` as one line of UTF-8 that steers no terminal: blanks at its ends are left out, each run
/// of control characters (line ends too) is one blank, and a byte outside ASCII in a text that is
/// not UTF-8 is "?".
[[nodiscard]] std::string printableLine(std::string_view text);

}  // namespace veltramoor
