#include "lists/listings/Filter.h"

#include <fmt/format.h>

#include "Util/Utf.h"
#include "lists/listings/FilterProblems.h"
#include "regex/RegexKitLiteAdditions.h"

namespace veltramoor {
namespace {

constexpr std::string_view kBefore = ".*(";
constexpr std::string_view kAfter = ").*";

/// Whether every character of `text` matches itself and nothing else. Malformed bytes do not: both
/// they and U+FFFD match any malformed byte.
bool isPlain(std::string_view text) {
  return text.find_first_of("\\^$.|?*+()[]{}") == std::string_view::npos && isValidUtf8(text) &&
         text.find("\uFFFD") == std::string_view::npos;
}

std::optional<FilterProblem> problemOf(std::string_view pattern, std::string_view text) {
  try {
    RegexMatching compiling{.timeLimit = std::chrono::milliseconds(1)};
    static_cast<void>(captureComponentsMatchedByRegex({}, pattern, &compiling));
  } catch (const RegexException& exception) {
    return filterProblem(exception.userInfo(), text, kBefore.size());
  }
  return std::nullopt;
}

}  // namespace

Filter::Filter(std::string regex)
    : regex_(std::move(regex)),
      pattern_(fmt::format("{}{}{}", kBefore, regex_, kAfter)),
      problem_(problemOf(pattern_, regex_)),
      plain_(!problem_ && isPlain(regex_)) {}

bool Filter::isAccepted(std::string_view name) const {
  return ask(name, RegexMatching{}.timeLimit) == FilterVerdict::Accepted;
}

FilterVerdict Filter::ask(std::string_view name, std::chrono::milliseconds limit) const {
  if (problem_) {
    return FilterVerdict::Refused;
  }
  if (plain_) {
    return name.find(regex_) != std::string_view::npos ? FilterVerdict::Accepted
                                                       : FilterVerdict::Refused;
  }
  RegexMatching matching{.timeLimit = limit};
  try {
    // Whether there is a match at all, which the first one tells.
    const bool found = !captureComponentsMatchedByRegex(name, pattern_, &matching).empty();
    return matching.timedOut ? FilterVerdict::GivenUp
           : found           ? FilterVerdict::Accepted
                             : FilterVerdict::Refused;
  } catch (const RegexException&) {
    return FilterVerdict::GivenUp;
  }
}

}  // namespace veltramoor
