// HTML character entities.
#pragma once

#include <span>
#include <string>
#include <string_view>

#include "Util/HtmlEntityTable.h"

namespace veltramoor {

/// Decodes entities of 4 to 10 characters, each once, from the end of the text backwards. UTF-8 in
/// and out; a numeric reference to an unpaired surrogate becomes U+FFFD, two that form a pair
/// become the one character.
[[nodiscard]] std::string gtm_stringByUnescapingFromHTML(std::string_view text);

/// Replaces characters of `table` (sorted by code unit) by their entities and, with
/// `escapingUnicode`, every other UTF-16 unit above 127 by a decimal reference.
[[nodiscard]] std::string gtm_stringByEscapingHTMLUsingTable(std::string_view text,
                                                             std::span<const HtmlEntity> table,
                                                             bool escapingUnicode);
/// The whole table, every non-ASCII unit escaped.
[[nodiscard]] std::string gtm_stringByEscapingForAsciiHTML(std::string_view text);
/// The short table (markup characters and those without a safe literal form), the rest kept.
[[nodiscard]] std::string gtm_stringByEscapingForHTML(std::string_view text);

}  // namespace veltramoor
