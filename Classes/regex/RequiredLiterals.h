// What an expression's text alone tells about every text it matches.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace veltramoor {

/// What a match may have between a required literal and the one before it.
enum class LiteralGap : std::uint8_t {
  Anything,
  /// Anything without a line end: `.*?`, `\w+`.
  OneLine,
  /// Decimal digits only, any number of them.
  Digits,
};

/// A text that every match contains, after the ones before it in the list. The gap before the first
/// is the one from where the match begins.
struct RequiredLiteral {
  std::u16string text;
  LiteralGap before = LiteralGap::Anything;
};

/// How an expression begins.
enum class RegexLead : std::uint8_t {
  Unknown,
  /// With its first required literal.
  Literal,
  /// With `.*` or `.*?`: what fails at the start of a line fails everywhere on that line.
  DotStar,
  /// With `[\s\S]*` or `[\s\S]*?`: what fails somewhere fails everywhere after it.
  AnythingStar,
};

struct RequiredLiterals {
  /// Whether the expression was understood. When not, nothing below says anything, and the next
  /// match may even depend on where the last one ended (`\G`).
  bool known = false;
  std::vector<RequiredLiteral> literals;
  RegexLead lead = RegexLead::Unknown;
};

/// Reads them from `regex`, an expression that ICU compiles without flags. Only concatenations and
/// groups without a quantifier contribute; everything else is a gap, and what is not surely
/// understood (options, quoting, unusual sets) makes the whole expression unknown.
[[nodiscard]] RequiredLiterals requiredLiterals(std::u16string_view regex);

}  // namespace veltramoor
