// Whether a text still holds what the next match needs.
#pragma once

#include <cstddef>
#include <optional>
#include <string_view>
#include <vector>

#include "regex/RequiredLiterals.h"

namespace veltramoor {

/// Looks through one text for an expression's required literals, in order.
///
/// A lazy expression without its last literal tries every combination of the earlier ones, for
/// seconds to days; this finds out beforehand in microseconds. Asking from ascending places takes
/// time linear in the text over all questions together. Keeps references to both arguments.
class LiteralChain {
 public:
  LiteralChain(const RequiredLiterals& required, std::u16string_view text);

  /// Where a search for a match that begins at or after `from` may start without missing one;
  /// absent when there is none. Never asked for an earlier place than before.
  [[nodiscard]] std::optional<std::size_t> searchStart(std::size_t from);

 private:
  struct Range {
    std::size_t start = 0;
    std::size_t end = 0;
  };
  /// The answer to the last question for a literal, good for every place from `from` to its start.
  struct Answer {
    bool given = false;
    std::size_t from = 0;
    std::optional<Range> found;
  };

  /// The literals from `first` on that must stand on one line, at or after `from`.
  [[nodiscard]] std::optional<Range> findBlock(std::size_t first, std::size_t from);
  /// The literal `first` and those tied to it by digits.
  [[nodiscard]] std::optional<Range> findTied(std::size_t first, std::size_t from);
  /// The end of the ones tied to `first`, which stands at `at`.
  [[nodiscard]] std::optional<std::size_t> endOfTied(std::size_t first, std::size_t at) const;
  /// The next literal whose gap is wider than `gap`.
  [[nodiscard]] std::size_t skip(std::size_t index, LiteralGap gap) const;

  const RequiredLiterals& required_;
  std::u16string_view text_;
  std::vector<Answer> answers_;
};

}  // namespace veltramoor
