// How an absent text looks inside a formatted one.
#pragma once

#include <optional>
#include <string>

namespace veltramoor {

/// The text, or "(null)": URLs and request bodies are formatted from settings that may be absent,
/// and a server or the URL check then refuses them.
[[nodiscard]] inline std::string formatted(const std::optional<std::string>& text) {
  return text.value_or("(null)");
}

}  // namespace veltramoor
