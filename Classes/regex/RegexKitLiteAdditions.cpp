#include "regex/RegexKitLiteAdditions.h"

#include <stdexcept>
#include <utility>

#include "regex/RegexMatcher.h"
#include "regex/ReplacementTemplate.h"

namespace veltramoor {
namespace {

std::vector<std::string> captures(const RegexMatcher& matcher) {
  std::vector<std::string> result;
  result.reserve(matcher.groupCount() + 1);
  for (std::size_t group = 0; group <= matcher.groupCount(); ++group) {
    result.push_back(matcher.capture(group));
  }
  return result;
}

/// Whether the time ran out, which the caller is told too.
bool ranOut(const RegexMatcher& matcher, RegexMatching* matching) {
  if (matching != nullptr) {
    matching->timedOut = matcher.timedOut();
  }
  return matcher.timedOut();
}

std::chrono::milliseconds timeLimit(RegexMatching* matching) {
  if (matching == nullptr) {
    return RegexMatching{}.timeLimit;
  }
  matching->timedOut = false;
  return matching->timeLimit;
}

}  // namespace

std::vector<std::string> captureComponentsMatchedByRegex(std::string_view text,
                                                         std::string_view regex,
                                                         RegexMatching* matching) {
  RegexMatcher matcher(text, regex, timeLimit(matching));
  const bool found = matcher.next();
  ranOut(matcher, matching);
  return found ? captures(matcher) : std::vector<std::string>{};
}

std::vector<std::vector<std::string>> arrayOfCaptureComponentsMatchedByRegex(
    std::string_view text, std::string_view regex, RegexMatching* matching) {
  RegexMatcher matcher(text, regex, timeLimit(matching));
  std::vector<std::vector<std::string>> result;
  while (matcher.next()) {
    result.push_back(captures(matcher));
  }
  if (ranOut(matcher, matching)) {
    result.clear();
  }
  return result;
}

std::optional<std::string> stringByMatching(std::string_view text, std::string_view regex,
                                            std::size_t capture, RegexMatching* matching) {
  RegexMatcher matcher(text, regex, timeLimit(matching));
  if (capture > matcher.groupCount()) {
    throw std::out_of_range("The expression has no such capture group.");
  }
  const bool found = matcher.next();
  ranOut(matcher, matching);
  return found ? std::optional(matcher.capture(capture)) : std::nullopt;
}

std::size_t replaceOccurrencesOfRegex(std::string& text, std::string_view regex,
                                      std::string_view replacement, RegexMatching* matching) {
  std::string result;
  std::size_t count = 0;
  {
    RegexMatcher matcher(text, regex, timeLimit(matching));
    std::optional<ReplacementTemplate> filling;
    std::size_t kept = 0;
    for (; matcher.next(); ++count) {
      if (!filling) {
        filling.emplace(replacement, matcher, regex);
      }
      const RegexMatcher::Range match = matcher.range(0).value();
      matcher.appendText(result, {kept, match.start});
      filling->appendTo(result, matcher);
      kept = match.end;
    }
    if (ranOut(matcher, matching) || count == 0) {
      return 0;
    }
    matcher.appendText(result, {kept, matcher.textLength()});
  }
  text = std::move(result);
  return count;
}

}  // namespace veltramoor
