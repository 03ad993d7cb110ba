// Base64 (RFC 4648 section 4).
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace veltramoor {

/// Standard alphabet, padded, no line breaks.
[[nodiscard]] std::string base64Encoding(std::string_view bytes);

/// Bytes of `text`. Skips white space and "=" anywhere; absent for any other character outside the
/// alphabet or a last group of one character. Throws std::invalid_argument for an absent text.
[[nodiscard]] std::optional<std::string> dataWithBase64EncodedString(
    const std::optional<std::string_view>& text);

}  // namespace veltramoor
