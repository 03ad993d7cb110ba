// Cutting a fetched page down to what is worth showing.
#pragma once

#include <chrono>
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "regex/RegexKitLiteAdditions.h"

namespace veltramoor {

/// The matching on one page. All of it together has two seconds, ordinary pages needing a hundredth
/// of that; what the time is up for, or what ICU gives up on, has no match. Nothing here throws
/// RegexException.
class PageCleaning {
 public:
  /// `limit`: the time for all of it.
  explicit PageCleaning(std::chrono::milliseconds limit = RegexMatching{}.timeLimit)
      : deadline_(Clock::now() + limit) {}

  /// The first match, element 0 the whole; empty when there is none.
  [[nodiscard]] std::vector<std::string> firstMatch(std::string_view page, std::string_view regex);
  /// One capture of the first match.
  [[nodiscard]] std::optional<std::string> capture(std::string_view page, std::string_view regex,
                                                   std::size_t number);
  /// Deletes every match of each expression, one expression after the other. False when one could
  /// not be done: `page` is then half cleaned, and no page to show.
  [[nodiscard]] bool removeAll(std::string& page, const std::vector<std::string>& regexes);

  /// The advertising that details and account page have in common, as expressions to remove.
  [[nodiscard]] static std::vector<std::string> advertising();
  /// An expression that matches `text` and nothing else.
  [[nodiscard]] static std::string quoted(std::string_view text);

 private:
  using Clock = std::chrono::steady_clock;
  [[nodiscard]] RegexMatching remaining() const;

  Clock::time_point deadline_;
};

}  // namespace veltramoor
