// ASCII, without the locale.
#pragma once

#include <algorithm>
#include <optional>
#include <string>
#include <string_view>

namespace veltramoor {

[[nodiscard]] constexpr char lowerCase(char c) {
  return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

/// `text` with its ASCII letters in lower case; other bytes stay.
[[nodiscard]] inline std::string lowerCase(std::string_view text) {
  std::string lowered(text);
  std::ranges::transform(lowered, lowered.begin(), [](char c) { return lowerCase(c); });
  return lowered;
}

/// 0 to 15; absent for what is no hexadecimal digit.
[[nodiscard]] constexpr std::optional<unsigned char> hexValue(char c) {
  const char lower = lowerCase(c);
  if (lower >= '0' && lower <= '9') {
    return static_cast<unsigned char>(lower - '0');
  }
  if (lower >= 'a' && lower <= 'f') {
    return static_cast<unsigned char>(lower - 'a' + 10);
  }
  return std::nullopt;
}

/// The byte that the escape at the beginning of `text` stands for ("%2F"; RFC 3986 section 2.1);
/// absent when there is none.
[[nodiscard]] constexpr std::optional<char> percentEscape(std::string_view text) {
  if (text.size() < 3 || text[0] != '%' || !hexValue(text[1]) || !hexValue(text[2])) {
    return std::nullopt;
  }
  return static_cast<char>(*hexValue(text[1]) * 16 + *hexValue(text[2]));
}

/// Appends "%" and two upper-case digits.
inline void appendPercentEscaped(std::string& result, char byte) {
  constexpr std::string_view kDigits = "0123456789ABCDEF";
  const auto value = static_cast<unsigned char>(byte);
  result += {'%', kDigits[value >> 4U], kDigits[value & 15U]};
}

}  // namespace veltramoor
