// Looking for literals and line ends in UTF-16, a vector of units at a time.
#pragma once

#include <cstddef>
#include <string_view>

namespace veltramoor {

inline constexpr std::size_t kNotFound = std::u16string_view::npos;

/// Whether "." stops at this unit: LF to CR, U+0085, U+2028, U+2029.
[[nodiscard]] constexpr bool isLineEnd(char16_t unit) {
  return (unit >= 0x0A && unit <= 0x0D) || unit == 0x85 || unit == 0x2028 || unit == 0x2029;
}

/// Where `literal` (not empty) first stands in `text` at or after `from`; `kNotFound` when nowhere.
/// `from` may be past the end.
[[nodiscard]] std::size_t findLiteral(std::u16string_view text, std::u16string_view literal,
                                      std::size_t from);

/// The first line end in `text` from `from` to just before `limit`, or `kNotFound`.
[[nodiscard]] std::size_t findLineEnd(std::u16string_view text, std::size_t from,
                                      std::size_t limit);

/// Where the line of `position` starts: just after the line end before it, but not before `from`.
[[nodiscard]] std::size_t lineStart(std::u16string_view text, std::size_t position,
                                    std::size_t from);

}  // namespace veltramoor
