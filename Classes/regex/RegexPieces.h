// An expression taken apart into literals and gaps.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace veltramoor {

/// One part of a concatenation.
struct RegexPiece {
  enum class Kind : std::uint8_t {
    Literal,       ///< exactly `text`
    Digits,        ///< `\d` under any quantifier
    OneLine,       ///< whatever it matches has no line end
    DotStar,       ///< `.*` or `.*?`
    AnythingStar,  ///< `[\s\S]*` or `[\s\S]*?`
    Anything,      ///< nothing is known
  };
  Kind kind = Kind::Anything;
  std::u16string text;
};

struct RegexPieces {
  std::vector<RegexPiece> pieces;
  bool hasBackReference = false;
};

/// Absent when the expression holds something that the reader does not surely understand. Groups
/// without a quantifier are dissolved; an alternation, a quantified group or a look-around is one
/// piece of which nothing is known.
[[nodiscard]] std::optional<RegexPieces> regexPieces(std::u16string_view regex);

}  // namespace veltramoor
