// Dates from one pattern to another.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace veltramoor {

/// `text` parsed with `sourceFormat` and written in `destinationFormat` (Unicode date patterns,
/// UTS 35), in the process's locale and time zone. Absent when the text does not parse.
[[nodiscard]] std::optional<std::string> dateStringFromString(std::string_view text,
                                                              std::string_view sourceFormat,
                                                              std::string_view destinationFormat);

}  // namespace veltramoor
