#include "regex/LiteralChain.h"

#include <unicode/uchar.h>
#include <unicode/utf16.h>

#include "regex/Utf16Scan.h"

namespace veltramoor {
namespace {

// ICU's macros convert between signs without casts.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wconversion"
#pragma GCC diagnostic ignored "-Wsign-conversion"
std::size_t skipDigits(std::u16string_view text, std::size_t at) {
  while (at < text.size()) {
    std::size_t next = at;
    UChar32 character = 0;
    U16_NEXT(text.data(), next, text.size(), character);
    if (u_isdigit(character) == 0) {
      break;
    }
    at = next;
  }
  return at;
}
#pragma GCC diagnostic pop

}  // namespace

LiteralChain::LiteralChain(const RequiredLiterals& required, std::u16string_view text)
    : required_(required), text_(text), answers_(required.literals.size()) {}

std::optional<std::size_t> LiteralChain::searchStart(std::size_t from) {
  std::size_t end = from;
  std::size_t firstLiteral = from;
  for (std::size_t i = 0; i < required_.literals.size(); i = skip(i, LiteralGap::OneLine)) {
    const std::optional<Range> block = findBlock(i, end);
    if (!block) {
      return std::nullopt;
    }
    if (i == 0) {
      firstLiteral = block->start;
    }
    end = block->end;
  }
  if (required_.lead == RegexLead::Literal) {
    return firstLiteral;
  }
  const bool startsOnLineOfFirst =
      !required_.literals.empty() && required_.literals.front().before != LiteralGap::Anything;
  return startsOnLineOfFirst ? lineStart(text_, firstLiteral, from) : from;
}

std::optional<LiteralChain::Range> LiteralChain::findBlock(std::size_t first, std::size_t from) {
  const std::size_t last = skip(first, LiteralGap::OneLine);
  for (;;) {
    std::optional<Range> block;
    std::size_t lineEnd = kNotFound;
    for (std::size_t i = first; i < last; i = skip(i, LiteralGap::Digits)) {
      const std::optional<Range> found = findTied(i, block ? block->end : from);
      if (!found) {
        return std::nullopt;
      }
      if (!block) {
        block = found;
        continue;
      }
      lineEnd = findLineEnd(text_, block->end, found->start);
      if (lineEnd != kNotFound) {
        break;
      }
      block->end = found->end;
    }
    if (lineEnd == kNotFound) {
      return block;
    }
    from = lineEnd + 1;  // this line does not hold them all; what is left of it does not either
  }
}

std::optional<LiteralChain::Range> LiteralChain::findTied(std::size_t first, std::size_t from) {
  Answer& answer = answers_[first];
  if (answer.given && from >= answer.from && (!answer.found || from <= answer.found->start)) {
    return answer.found;
  }
  answer = {.given = true, .from = from, .found = std::nullopt};
  const std::u16string& literal = required_.literals[first].text;
  for (std::size_t at = findLiteral(text_, literal, from); at != kNotFound;
       at = findLiteral(text_, literal, at + 1)) {
    if (const std::optional<std::size_t> end = endOfTied(first, at)) {
      answer.found = Range{at, *end};
      break;
    }
  }
  return answer.found;
}

std::optional<std::size_t> LiteralChain::endOfTied(std::size_t first, std::size_t at) const {
  const auto& literals = required_.literals;
  std::size_t end = at + literals[first].text.size();
  const std::size_t last = skip(first, LiteralGap::Digits);
  for (std::size_t i = first + 1; i < last; ++i) {
    end = skipDigits(text_, end);
    if (!text_.substr(end).starts_with(literals[i].text)) {
      return std::nullopt;
    }
    end += literals[i].text.size();
  }
  return end;
}

std::size_t LiteralChain::skip(std::size_t index, LiteralGap gap) const {
  const auto& literals = required_.literals;
  do {
    ++index;
  } while (index < literals.size() &&
           (literals[index].before == gap || literals[index].before == LiteralGap::Digits));
  return index;
}

}  // namespace veltramoor
