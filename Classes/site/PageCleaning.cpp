#include "site/PageCleaning.h"

#include <algorithm>

#include "platform/SiteConfiguration.h"

namespace veltramoor {

using std::chrono::milliseconds;

RegexMatching PageCleaning::remaining() const {
  const auto left = std::chrono::duration_cast<milliseconds>(deadline_ - Clock::now());
  return {.timeLimit = std::max(left, milliseconds(0))};
}

std::vector<std::string> PageCleaning::firstMatch(std::string_view page, std::string_view regex) {
  try {
    RegexMatching matching = remaining();
    return captureComponentsMatchedByRegex(page, regex, &matching);
  } catch (const RegexException&) {
    return {};
  }
}

std::optional<std::string> PageCleaning::capture(std::string_view page, std::string_view regex,
                                                 std::size_t number) {
  try {
    RegexMatching matching = remaining();
    return stringByMatching(page, regex, number, &matching);
  } catch (const RegexException&) {
    return std::nullopt;
  }
}

bool PageCleaning::removeAll(std::string& page, const std::vector<std::string>& regexes) {
  for (const std::string& regex : regexes) {
    try {
      RegexMatching matching = remaining();
      replaceOccurrencesOfRegex(page, regex, "", &matching);
      if (matching.timedOut) {
        return false;
      }
    } catch (const RegexException&) {
      return false;
    }
  }
  return true;
}

std::vector<std::string> PageCleaning::advertising() {
  const std::string host = quoted(SiteConfiguration::current().sponsoredDownloadHost);
  return {R"(<div class="spons-link[\s\S]*?</div>)", R"(<div class="download">[\s\S]*?</div>)",
          R"(<a href="http://)" + host + R"([\s\S]*?</a>)"};
}

std::string PageCleaning::quoted(std::string_view text) {
  std::string regex;
  for (const char character : text) {
    if (std::string_view(R"(\.[](){}*+?^$|)").find(character) != std::string_view::npos) {
      regex += '\\';
    }
    regex += character;
  }
  return regex;
}

}  // namespace veltramoor
