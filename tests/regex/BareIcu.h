// The same questions asked of ICU directly, with none of our shortcuts: the measure of what
// matches.
#pragma once

#include <unicode/uregex.h>

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "Util/Utf.h"

namespace veltramoor {

struct BareAnswer {
  /// U_ZERO_ERROR when ICU went through the whole text within the limit.
  UErrorCode status = U_ZERO_ERROR;
  std::size_t groupCount = 0;
  std::vector<std::vector<std::string>> matches;
  /// The text with every match replaced.
  std::string replaced;
};

/// `steps` limits each search, in ICU's units of about 0.1 ms. It counts steps, not time, so that
/// the same input always has the same outcome.
inline BareAnswer askBareIcu(std::string_view text, std::string_view regex,
                             std::string_view replacement, std::int32_t steps) {
  const std::u16string units = utf16FromUtf8(text);
  const std::u16string pattern = utf16FromUtf8(regex);
  const std::u16string filling = utf16FromUtf8(replacement);
  const auto size = [](const std::u16string& s) { return static_cast<std::int32_t>(s.size()); };

  BareAnswer answer;
  UErrorCode& status = answer.status;
  const std::unique_ptr<URegularExpression, decltype(&uregex_close)> expression(
      uregex_open(pattern.data(), size(pattern), 0, nullptr, &status), &uregex_close);
  uregex_setText(expression.get(), units.data(), size(units), &status);
  uregex_setTimeLimit(expression.get(), steps, &status);
  const std::int32_t groups = uregex_groupCount(expression.get(), &status);
  answer.groupCount = static_cast<std::size_t>(groups);
  while (U_SUCCESS(status) && uregex_findNext(expression.get(), &status)) {
    auto& captures = answer.matches.emplace_back();
    for (std::int32_t group = 0; group <= groups; ++group) {
      const std::int32_t start = uregex_start(expression.get(), group, &status);
      const std::int32_t end = uregex_end(expression.get(), group, &status);
      captures.push_back(
          start < 0 ? std::string()
                    : utf8FromUtf16(std::u16string_view(units).substr(
                          static_cast<std::size_t>(start), static_cast<std::size_t>(end - start))));
    }
  }
  if (answer.matches.empty() || U_FAILURE(status)) {
    answer.replaced = text;
    return answer;
  }
  std::u16string replaced(units.size() * 8 + 1000, u'\0');
  const std::int32_t length = uregex_replaceAll(expression.get(), filling.data(), size(filling),
                                                replaced.data(), size(replaced), &status);
  if (U_SUCCESS(status)) {
    answer.replaced =
        utf8FromUtf16(std::u16string_view(replaced).substr(0, static_cast<std::size_t>(length)));
  }
  return answer;
}

}  // namespace veltramoor
