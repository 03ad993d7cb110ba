// One favourite filter.
#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace veltramoor {

/// Why a filter's text is no expression.
struct FilterProblem {
  /// One sentence for the person.
  std::string reason;
  /// Where in the text, in UTF-16 units from 0 to its length; absent when that cannot be said.
  std::optional<std::size_t> offset;
};

enum class FilterVerdict : std::uint8_t {
  Accepted,
  Refused,
  /// No answer within the limit, or none within ICU's memory.
  GivenUp,
};

/// The person's text as typed, and what it accepts: every name in which the expression
/// `.*(text).*` matches. The text is judged as it is used there: `a)(b` is valid.
///
/// Immutable; safe on any number of threads.
class Filter {
 public:
  /// Never throws for what the text says: see `problem`.
  explicit Filter(std::string regex);

  [[nodiscard]] const std::string& regex() const { return regex_; }
  /// Absent for a valid text. One that is not valid accepts nothing.
  [[nodiscard]] const std::optional<FilterProblem>& problem() const { return problem_; }

  /// False also when the default limit of a match passed first: two seconds.
  [[nodiscard]] bool isAccepted(std::string_view name) const;
  /// `limit` of at least a millisecond.
  [[nodiscard]] FilterVerdict ask(std::string_view name, std::chrono::milliseconds limit) const;

 private:
  std::string regex_;
  std::string pattern_;
  std::optional<FilterProblem> problem_;
  /// The text means itself: looking for it finds what the expression matches.
  bool plain_;
};

}  // namespace veltramoor
