// The regular-expression operations that scraping, cleaning and filtering are made of.
#pragma once

#include <chrono>
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "regex/RegexException.h"

namespace veltramoor {

/// How one operation may be limited and what it reports.
struct RegexMatching {
  /// Wall-clock limit over all matches of the call. Real pages need at most 5 ms.
  std::chrono::milliseconds timeLimit{2000};
  /// Set by the operation: the limit was hit, and the result is the one of a text without a match.
  bool timedOut = false;
};

// All operations take UTF-8 and ICU's expression syntax with no flags set, are safe on any number
// of threads at once, and throw RegexException for an expression that ICU cannot compile, or when
// ICU fails while matching: `(a|b)*` on a megabyte needs more than the 8 MB of its stack. A text
// that is not valid UTF-8 is read with U+FFFD in place of what is malformed. A call that hits its
// time limit behaves as if nothing had matched. The empty expression counts as one that does not
// compile.

/// First match: element 0 the whole, element n capture n, "" for a group that took no part. Empty
/// when there is no match.
[[nodiscard]] std::vector<std::string> captureComponentsMatchedByRegex(
    std::string_view text, std::string_view regex, RegexMatching* matching = nullptr);

/// Every match, left to right and not overlapping, each as above.
[[nodiscard]] std::vector<std::vector<std::string>> arrayOfCaptureComponentsMatchedByRegex(
    std::string_view text, std::string_view regex, RegexMatching* matching = nullptr);

/// Capture `capture` of the first match; absent when there is no match, "" when the group took no
/// part. Throws std::out_of_range for a group that the expression does not have.
[[nodiscard]] std::optional<std::string> stringByMatching(std::string_view text,
                                                          std::string_view regex,
                                                          std::size_t capture,
                                                          RegexMatching* matching = nullptr);

/// Replaces every match in place and returns how many. In `replacement` `$n` stands for capture n
/// and a backslash takes the next character literally; a `$` without the number of a group that the
/// expression has throws RegexException at the first match.
std::size_t replaceOccurrencesOfRegex(std::string& text, std::string_view regex,
                                      std::string_view replacement,
                                      RegexMatching* matching = nullptr);

}  // namespace veltramoor
