#include "Util/GTMNSStringHTMLAdditions.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

#include "Util/Utf.h"

namespace veltramoor {
namespace {

constexpr std::size_t kShortestCandidate = 4;
constexpr std::size_t kLongestCandidate = 10;
constexpr std::uint32_t kLargestReference = 65534;
constexpr char16_t kReplacement = 0xFFFD;

/// One decoded entity: its character and its length in the text.
struct Decoded {
  char16_t unit;
  std::size_t length;
};

bool isHighSurrogate(char16_t unit) { return unit >= 0xD800 && unit < 0xDC00; }
bool isLowSurrogate(char16_t unit) { return unit >= 0xDC00 && unit < 0xE000; }

/// The value of a digit, or 16 for any other character.
std::uint32_t digitValue(char character) {
  if (character >= '0' && character <= '9') {
    return static_cast<std::uint32_t>(character - '0');
  }
  if (character >= 'a' && character <= 'f') {
    return static_cast<std::uint32_t>(character - 'a' + 10);
  }
  if (character >= 'A' && character <= 'F') {
    return static_cast<std::uint32_t>(character - 'A' + 10);
  }
  return 16;
}

/// `reference` is what stands between "&#" and ";": 7 characters at most, so nothing overflows.
std::optional<char16_t> numericReference(std::string_view reference) {
  std::uint32_t base = 10;
  if (reference.front() == 'x' || reference.front() == 'X') {
    base = 16;
    reference.remove_prefix(1);
  }
  std::uint32_t number = 0;
  for (const char character : reference) {
    const std::uint32_t digit = digitValue(character);
    if (digit >= base) {
      return std::nullopt;
    }
    number = number * base + digit;
  }
  if (number < 1 || number > kLargestReference) {
    return std::nullopt;
  }
  return static_cast<char16_t>(number);
}

std::optional<char16_t> namedEntity(std::string_view entity) {
  static const std::vector<HtmlEntity> byText = [] {
    std::vector<HtmlEntity> sorted(htmlEntities().begin(), htmlEntities().end());
    std::ranges::sort(sorted, {}, &HtmlEntity::text);
    return sorted;
  }();
  const auto found = std::ranges::lower_bound(byText, entity, {}, &HtmlEntity::text);
  return found != byText.end() && found->text == entity ? std::optional(found->unit) : std::nullopt;
}

/// The entity that `text` begins with. Everything that decodes is ASCII, so that lengths in bytes
/// and in UTF-16 units are the same; a candidate ends before the next "&".
std::optional<Decoded> decode(std::string_view text) {
  if (text.empty() || text.front() != '&') {
    return std::nullopt;
  }
  const std::size_t end = text.substr(0, kLongestCandidate).find_first_of(";&", 1);
  if (end == std::string_view::npos || text[end] == '&' || end + 1 < kShortestCandidate) {
    return std::nullopt;
  }
  const std::size_t length = end + 1;
  const std::optional<char16_t> unit = text[1] == '#' ? numericReference(text.substr(2, length - 3))
                                                      : namedEntity(text.substr(0, length));
  return unit ? std::optional(Decoded{*unit, length}) : std::nullopt;
}

const HtmlEntity* entityFor(std::span<const HtmlEntity> table, char16_t unit) {
  const auto found = std::ranges::lower_bound(table, unit, {}, &HtmlEntity::unit);
  return found != table.end() && found->unit == unit ? &*found : nullptr;
}

}  // namespace

// Forwards gives what backwards gives: a candidate never reaches past the next "&", so that none
// depends on what became of another.
std::string gtm_stringByUnescapingFromHTML(std::string_view text) {
  std::size_t ampersand = text.find('&');
  if (ampersand == std::string_view::npos) {
    return std::string(text);
  }
  std::string result;
  result.reserve(text.size());
  std::size_t copied = 0;
  while (ampersand != std::string_view::npos) {
    const std::optional<Decoded> first = decode(text.substr(ampersand));
    std::size_t next = ampersand + 1;
    if (first) {
      result.append(text.substr(copied, ampersand - copied));
      next = ampersand + first->length;
      const auto second =
          isHighSurrogate(first->unit) ? decode(text.substr(next)) : std::optional<Decoded>();
      if (second && isLowSurrogate(second->unit)) {
        result += utf8FromUtf16(std::u16string{first->unit, second->unit});
        next += second->length;
      } else {
        const bool unpaired = isHighSurrogate(first->unit) || isLowSurrogate(first->unit);
        result += utf8FromUtf16(std::u16string(1, unpaired ? kReplacement : first->unit));
      }
      copied = next;
    }
    ampersand = text.find('&', next);
  }
  return result.append(text.substr(copied));
}

std::string gtm_stringByEscapingHTMLUsingTable(std::string_view text,
                                               std::span<const HtmlEntity> table,
                                               bool escapingUnicode) {
  std::u16string result;
  for (const char16_t unit : utf16FromUtf8(text)) {
    if (const HtmlEntity* entity = entityFor(table, unit); entity != nullptr) {
      result.append(entity->text.begin(), entity->text.end());
    } else if (escapingUnicode && unit > 127) {
      const std::string reference = "&#" + std::to_string(unit) + ";";
      result.append(reference.begin(), reference.end());
    } else {
      result += unit;
    }
  }
  return utf8FromUtf16(result);
}

std::string gtm_stringByEscapingForAsciiHTML(std::string_view text) {
  return gtm_stringByEscapingHTMLUsingTable(text, htmlEntities(), true);
}

std::string gtm_stringByEscapingForHTML(std::string_view text) {
  return gtm_stringByEscapingHTMLUsingTable(text, htmlMarkupEntities(), false);
}

}  // namespace veltramoor
