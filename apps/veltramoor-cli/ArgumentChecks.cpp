#include "ArgumentChecks.h"

#include <fmt/format.h>

#include <algorithm>
#include <charconv>

#include "Util/Ascii.h"
#include "Util/Utf.h"

namespace veltramoor::cli {

std::optional<int> wholeNumber(std::string_view text, int least, int most) {
  int number = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  const bool isNumber = error == std::errc() && end == text.data() + text.size();
  return isNumber && number >= least && number <= most ? std::optional(number) : std::nullopt;
}

ArgumentCheck wholeNumbers(int least, int most) {
  return {[least, most](std::string& value) {
            const std::optional<int> number = wholeNumber(value, least, most);
            if (!number) {
              return fmt::format("takes a whole number from {} to {}", least, most);
            }
            value = std::to_string(*number);
            return std::string();
          },
          true, "INT"};
}

ArgumentCheck pageNumbers() { return wholeNumbers(0, 1'000'000); }

ArgumentCheck rowNumbers() { return wholeNumbers(1, 1'000'000); }

std::string listed(const std::vector<std::string>& words) {
  std::string text;
  for (std::size_t i = 0; i < words.size(); ++i) {
    text += (i == 0 ? "" : i + 1 == words.size() ? " or " : ", ") + words[i];
  }
  return text;
}

ArgumentCheck oneOf(const std::vector<std::string>& words) {
  return {[words](std::string& value) {
            return std::ranges::find(words, value) != words.end() ? std::string()
                                                                  : "takes " + listed(words);
          },
          true};
}

ArgumentCheck oneOf(const std::vector<SettingChoice>& choices) {
  return {[choices](std::string& value) {
            std::vector<std::string> names;
            bool hasCodes = false;
            for (const SettingChoice& choice : choices) {
              names.push_back(lowerCase(choice.name));
              if (names.back() == lowerCase(value) || value == choice.code) {
                value = choice.code;
                return std::string();
              }
              hasCodes = hasCodes || names.back() != choice.code;
            }
            return "takes " + listed(names) + (hasCodes ? ", or the site's code" : "");
          },
          true};
}

ArgumentCheck categoryCodes() {
  return {[](std::string& value) {
            std::string words = "takes ";
            for (const CategoryGroup& group : categoryTable()) {
              for (const SettingChoice& member : group.members) {
                if (value == member.code) {
                  return std::string();
                }
              }
              words +=
                  fmt::format("{} for {}, ", group.members.front().code, lowerCase(group.name));
            }
            return words + "or the code of a part of these, such as 101";
          },
          true};
}

ArgumentCheck utf8() {
  return {[](const std::string& value) {
            return std::string(isValidUtf8(value) ? "" : "is not text in UTF-8");
          },
          false};
}

}  // namespace veltramoor::cli
