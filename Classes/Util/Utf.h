// UTF-8 and UTF-16, in and out.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace veltramoor {

/// Whether `bytes` is well-formed UTF-8 (Unicode 15, table 3-7).
[[nodiscard]] bool isValidUtf8(std::string_view bytes);
/// Whether every byte is below 128.
[[nodiscard]] bool isAscii(std::string_view bytes);
/// UTF-16 units of a text in well-formed UTF-8.
[[nodiscard]] std::size_t utf16Length(std::string_view text);
/// Conversions; what is malformed becomes U+FFFD.
[[nodiscard]] std::u16string utf16FromUtf8(std::string_view text);
[[nodiscard]] std::string utf8FromUtf16(std::u16string_view text);
/// Replaces `buffer` without filling it with zeros first: for text that is converted often.
void assignUtf16(std::u16string& buffer, std::string_view text);

}  // namespace veltramoor
