#include "regex/RequiredLiterals.h"

#include <unicode/uchar.h>

#include <algorithm>
#include <optional>

#include "regex/RegexPieces.h"
#include "regex/Utf16Scan.h"

namespace veltramoor {
namespace {

using Kind = RegexPiece::Kind;

bool containsLineEnd(std::u16string_view text) {
  return std::any_of(text.begin(), text.end(), isLineEnd);
}

/// Surrogates count as digits here, so that the answer "no digit" is sure.
bool mayBeDigit(char16_t unit) { return (unit & 0xF800) == 0xD800 || u_isdigit(unit) != 0; }

LiteralGap gapOf(Kind kind) {
  switch (kind) {
    case Kind::Digits:
      return LiteralGap::Digits;
    case Kind::OneLine:
    case Kind::DotStar:
      return LiteralGap::OneLine;
    default:
      return LiteralGap::Anything;
  }
}

/// Of two gaps in a row.
LiteralGap joined(LiteralGap first, LiteralGap second) {
  return first == LiteralGap::Anything || second == LiteralGap::Anything ? LiteralGap::Anything
                                                                         : LiteralGap::OneLine;
}

/// A gap that may be checked for a literal and the next: digits only between literals whose facing
/// ends are none (one run of digits is then looked at once, and its end is certain), and no line
/// where the literals themselves hold line ends.
LiteralGap checkable(LiteralGap gap, std::u16string_view previous, std::u16string_view next) {
  if (containsLineEnd(previous) || containsLineEnd(next)) {
    return LiteralGap::Anything;
  }
  if (gap == LiteralGap::Digits && (mayBeDigit(previous.back()) || mayBeDigit(next.front()))) {
    return LiteralGap::OneLine;
  }
  return gap;
}

RegexLead leadOf(const RegexPieces& regex) {
  const Kind first = regex.pieces.empty() ? Kind::Anything : regex.pieces.front().kind;
  if (first == Kind::Literal) {
    return RegexLead::Literal;
  }
  if (regex.hasBackReference) {  // what it repeats may depend on where the match began
    return RegexLead::Unknown;
  }
  return first == Kind::DotStar        ? RegexLead::DotStar
         : first == Kind::AnythingStar ? RegexLead::AnythingStar
                                       : RegexLead::Unknown;
}

}  // namespace

RequiredLiterals requiredLiterals(std::u16string_view regex) {
  RequiredLiterals required;
  const std::optional<RegexPieces> read = regexPieces(regex);
  if (!read) {
    return required;
  }
  required.known = true;

  std::optional<LiteralGap> gap;
  for (const RegexPiece& piece : read->pieces) {
    if (piece.kind != Kind::Literal) {
      gap = gap ? joined(*gap, gapOf(piece.kind)) : gapOf(piece.kind);
    } else if (!gap && !required.literals.empty()) {
      required.literals.back().text += piece.text;
    } else {
      required.literals.push_back({piece.text, gap.value_or(LiteralGap::Anything)});
      gap.reset();
    }
  }

  auto& literals = required.literals;
  for (std::size_t i = literals.size(); i-- > 1;) {
    literals[i].before = checkable(literals[i].before, literals[i - 1].text, literals[i].text);
  }
  required.lead = leadOf(*read);
  return required;
}

}  // namespace veltramoor
