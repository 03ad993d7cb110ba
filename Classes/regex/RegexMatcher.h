// One expression going through one text.
#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "regex/CompiledRegexCache.h"
#include "regex/LiteralChain.h"
#include "regex/RegexKitLiteAdditions.h"

namespace veltramoor {

/// Finds what ICU finds, in the same order, but asks ICU only where a match is possible: see
/// `LiteralChain` and `RegexLead`. What still takes too long ends at a wall-clock deadline.
///
/// Belongs to one thread. `text` and `regex` must outlive it.
class RegexMatcher {
 public:
  /// A match or a capture, in UTF-16 units of the text.
  struct Range {
    std::size_t start = 0;
    std::size_t end = 0;
  };

  /// Throws RegexException when `regex` does not compile. The clock starts here.
  RegexMatcher(std::string_view text, std::string_view regex, std::chrono::milliseconds timeLimit);
  ~RegexMatcher();
  RegexMatcher(const RegexMatcher&) = delete;
  RegexMatcher& operator=(const RegexMatcher&) = delete;

  /// Goes to the next match. False when there is none, when the time is up, and ever after. Throws
  /// RegexException when ICU fails.
  [[nodiscard]] bool next();
  [[nodiscard]] bool timedOut() const { return timedOut_; }

  [[nodiscard]] std::size_t groupCount() const { return groupCount_; }
  /// Of the match `next()` went to: group 0 is the whole match. Absent for a group without part.
  [[nodiscard]] std::optional<Range> range(std::size_t group) const;
  /// The text of a group in UTF-8, "" for a group without part.
  [[nodiscard]] std::string capture(std::size_t group) const;

  [[nodiscard]] std::size_t textLength() const { return utf16_.size(); }
  /// Appends a part of the text to `out` in UTF-8.
  void appendText(std::string& out, Range part) const;

 private:
  using Clock = std::chrono::steady_clock;

  static std::int8_t goOn(const void* deadline, std::int32_t steps);
  static std::int8_t mayBeginAt(const void* onlyStart, std::int64_t place);

  [[nodiscard]] bool find();
  [[nodiscard]] bool findFrom(std::size_t from);
  [[nodiscard]] bool search(std::size_t start);
  /// Whether a search is over when it fails where it starts.
  [[nodiscard]] bool hasOneAttempt() const;
  [[nodiscard]] bool settle(std::int8_t found, int status);
  [[nodiscard]] bool expired();

  const std::string_view text_;
  const std::string_view regex_;
  const Clock::time_point deadline_;
  CompiledRegex compiled_;
  std::u16string utf16_;
  bool textIsAscii_;
  LiteralChain chain_;
  std::size_t groupCount_ = 0;
  std::optional<Range> match_;
  std::int64_t onlyStart_ = 0;
  bool finished_ = false;
  bool timedOut_ = false;
};

}  // namespace veltramoor
