// Whole numbers as they are stored in texts.
#pragma once

#include <string_view>

namespace veltramoor {

/// The decimal number that `text` is, a sign and blanks around it allowed; 0 when it is none, and
/// when an int cannot hold it.
[[nodiscard]] int integerValue(std::string_view text);

}  // namespace veltramoor
