// Words with capital initials.
#pragma once

#include <string>
#include <string_view>

namespace veltramoor {

/// First letter of each word upper-case, the rest lower-case (ICU title case, root locale).
[[nodiscard]] std::string capitalized(std::string_view text);

/// Without Unicode white space and line ends at both ends.
[[nodiscard]] std::string trimmed(std::string_view text);

}  // namespace veltramoor
