// The named character entities.
#pragma once

#include <span>
#include <string_view>

namespace veltramoor {

struct HtmlEntity {
  /// With "&" and ";", for example "&amp;".
  std::string_view text;
  char16_t unit;
};

/// The 252 character entity references of HTML 4.01 (section 24) and "&apos;", by code point.
[[nodiscard]] std::span<const HtmlEntity> htmlEntities();
/// The few that text in UTF-8 needs.
[[nodiscard]] std::span<const HtmlEntity> htmlMarkupEntities();

}  // namespace veltramoor
