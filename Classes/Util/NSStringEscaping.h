// Percent-escaping.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace veltramoor {

/// `text` (UTF-8) as one form value: every byte outside ALPHA / DIGIT / "-" / "." / "_" / "~"
/// (RFC 3986 section 2.3, "unreserved") as "%" and two upper-case hex digits; a space is %20.
[[nodiscard]] std::string stringWithPercentEscape(std::string_view text);

/// `text` with every character that may not stand in a URL escaped in UTF-8. A `%` that begins a
/// valid two-digit escape stays, so nothing is escaped twice; any other becomes %25. `#` and square
/// brackets are escaped.
[[nodiscard]] std::string stringByAddingPercentEscapes(std::string_view text);

/// The same in the ASCII encoding: absent when the text holds a character outside ASCII.
[[nodiscard]] std::optional<std::string> stringByAddingPercentEscapesInAscii(std::string_view text);

/// The bytes that an escaped text stands for; a `%` that begins no escape stays. They may be any
/// bytes, NUL too.
[[nodiscard]] std::string stringByReplacingPercentEscapes(std::string_view text);

}  // namespace veltramoor
