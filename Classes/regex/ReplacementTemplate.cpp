#include "regex/ReplacementTemplate.h"

#include <unicode/utypes.h>

#include <utility>

#include "Util/Utf.h"
#include "regex/RegexFailure.h"

namespace veltramoor {
namespace {

bool isDigit(char c) { return c >= '0' && c <= '9'; }

}  // namespace

ReplacementTemplate::ReplacementTemplate(std::string_view replacement, const RegexMatcher& matcher,
                                         std::string_view regex) {
  const std::string text = utf8FromUtf16(utf16FromUtf8(replacement));  // U+FFFD for the malformed
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] == '\\') {
      if (++i < text.size()) {
        lastText_ += text[i];
      }
      continue;
    }
    if (text[i] != '$') {
      lastText_ += text[i];
      continue;
    }
    if (i + 1 == text.size() || !isDigit(text[i + 1])) {
      throwUnexpectedRegexError(U_REGEX_INVALID_CAPTURE_GROUP_NAME, regex);
    }
    auto group = static_cast<std::size_t>(text[++i] - '0');
    if (group > matcher.groupCount()) {
      throwUnexpectedRegexError(U_INDEX_OUTOFBOUNDS_ERROR, regex);
    }
    for (; i + 1 < text.size() && isDigit(text[i + 1]); ++i) {
      const std::size_t longer = group * 10 + static_cast<std::size_t>(text[i + 1] - '0');
      if (longer > matcher.groupCount()) {
        break;
      }
      group = longer;
    }
    pieces_.push_back({std::exchange(lastText_, {}), group});
  }
}

void ReplacementTemplate::appendTo(std::string& out, const RegexMatcher& matcher) const {
  for (const Piece& piece : pieces_) {
    out += piece.text;
    out += matcher.capture(piece.capture);
  }
  out += lastText_;
}

}  // namespace veltramoor
