#include "Util/NSStringEscaping.h"

#include <array>

#include "Util/Ascii.h"
#include "Util/Utf.h"

namespace veltramoor {
namespace {

/// Bytes that stay as they are.
using ByteSet = std::array<bool, 256>;

consteval ByteSet unreservedAnd(std::string_view others) {
  constexpr std::string_view kUnreserved =
      "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789-._~";
  ByteSet set{};
  for (const std::string_view members : {kUnreserved, others}) {
    for (const char member : members) {
      set.at(static_cast<unsigned char>(member)) = true;
    }
  }
  return set;
}

constexpr ByteSet kFormValueBytes = unreservedAnd("");
/// RFC 3986 section 2.2, "reserved", without "#", "[" and "]".
constexpr ByteSet kUrlBytes = unreservedAnd(":/?@!$&'()*+,;=");

std::string escape(std::string_view text, const ByteSet& kept, bool keepEscapes) {
  std::string result;
  result.reserve(text.size() + text.size() / 4);
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (kept[static_cast<unsigned char>(text[i])] ||
        (keepEscapes && percentEscape(text.substr(i)))) {
      result += text[i];
    } else {
      appendPercentEscaped(result, text[i]);
    }
  }
  return result;
}

}  // namespace

std::string stringWithPercentEscape(std::string_view text) {
  return escape(text, kFormValueBytes, false);
}

std::string stringByAddingPercentEscapes(std::string_view text) {
  return escape(text, kUrlBytes, true);
}

std::string stringByReplacingPercentEscapes(std::string_view text) {
  std::string result;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const std::optional<char> byte = percentEscape(text.substr(i));
    result += byte.value_or(text[i]);
    i += byte ? 2U : 0U;
  }
  return result;
}

std::optional<std::string> stringByAddingPercentEscapesInAscii(std::string_view text) {
  if (!isAscii(text)) {
    return std::nullopt;
  }
  return stringByAddingPercentEscapes(text);
}

}  // namespace veltramoor
