// What takes the place of a match.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "regex/RegexMatcher.h"

namespace veltramoor {

/// `$n` stands for capture n, with as many digits as make the number of a group; a backslash takes
/// the next character literally.
class ReplacementTemplate {
 public:
  /// Throws RegexException with ICU's code for it when a `$` is followed by no number, or by the
  /// number of a group that `matcher`'s expression does not have.
  ReplacementTemplate(std::string_view replacement, const RegexMatcher& matcher,
                      std::string_view regex);

  /// Appends it, filled in from the match that `matcher` is at.
  void appendTo(std::string& out, const RegexMatcher& matcher) const;

 private:
  /// A text, then a capture (none after the last text).
  struct Piece {
    std::string text;
    std::size_t capture = 0;
  };
  std::vector<Piece> pieces_;
  std::string lastText_;
};

}  // namespace veltramoor
