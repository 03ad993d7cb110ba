#include "Util/Capitalized.h"

#include <unicode/locid.h>
#include <unicode/uchar.h>
#include <unicode/unistr.h>

namespace veltramoor {
namespace {

icu::UnicodeString fromUtf8(std::string_view text) {
  return icu::UnicodeString::fromUTF8(
      icu::StringPiece(text.data(), static_cast<std::int32_t>(text.size())));
}

}  // namespace

std::string capitalized(std::string_view text) {
  std::string result;
  fromUtf8(text).toTitle(nullptr, icu::Locale::getRoot()).toUTF8String(result);
  return result;
}

std::string trimmed(std::string_view text) {
  const icu::UnicodeString units = fromUtf8(text);
  std::int32_t begin = 0;
  std::int32_t end = units.length();
  while (begin < end && u_isUWhiteSpace(units[begin])) {
    ++begin;
  }
  while (end > begin && u_isUWhiteSpace(units[end - 1])) {
    --end;
  }
  std::string result;
  units.tempSubStringBetween(begin, end).toUTF8String(result);
  return result;
}

}  // namespace veltramoor
