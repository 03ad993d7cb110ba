// Whole numbers as they are stored in texts.
#pragma once

#include <string_view>

namespace veltramoor {

/// The decimal number that `text` begins with, blanks before it and a sign allowed; 0 when there is
/// none, and when it is none that an int can hold.
[[nodiscard]] int integerValue(std::string_view text);

}  // namespace veltramoor
