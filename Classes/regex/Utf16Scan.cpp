#include "regex/Utf16Scan.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstdint>
#include <cstring>

namespace veltramoor {
namespace {

/// Eight units, compared at once. GCC and clang turn this into the vector instructions of whatever
/// machine it is.
using Lanes = std::uint16_t __attribute__((vector_size(16)));
constexpr std::size_t kLanes = 8;
constexpr std::size_t kBlock = 4 * kLanes;

Lanes load(const char16_t* units) {
  Lanes lanes;
  std::memcpy(&lanes, units, sizeof lanes);
  return lanes;
}

Lanes fill(char16_t unit) {
  const std::uint16_t u = unit;
  return Lanes{u, u, u, u, u, u, u, u};
}

template <typename Mask>
bool any(Mask mask) {
  const auto words = std::bit_cast<std::array<std::uint64_t, 2>>(mask);
  return (words[0] | words[1]) != 0;
}

auto lineEndMask(Lanes lanes) {
  return ((lanes - fill(0x0A)) <= fill(3)) | (lanes == fill(0x85)) |
         ((lanes & fill(0xFFFE)) == fill(0x2028));
}

}  // namespace

std::size_t findLiteral(std::u16string_view text, std::u16string_view literal, std::size_t from) {
  const std::size_t length = literal.size();
  if (length > text.size() || from > text.size() - length) {
    return kNotFound;
  }
  const std::size_t end = text.size() - length + 1;  // one past the last place it can stand
  const char16_t first = literal.front();
  const char16_t last = literal.back();
  const auto standsAt = [&](std::size_t at) {
    return text[at] == first && text[at + length - 1] == last &&
           std::memcmp(text.data() + at, literal.data(), length * sizeof(char16_t)) == 0;
  };

  std::size_t at = from;
  const Lanes firsts = fill(first);
  const Lanes lasts = fill(last);
  for (; end - at >= kBlock; at += kBlock) {
    const char16_t* head = text.data() + at;
    const char16_t* tail = head + length - 1;
    const auto candidates =
        ((load(head) == firsts) & (load(tail) == lasts)) |
        ((load(head + kLanes) == firsts) & (load(tail + kLanes) == lasts)) |
        ((load(head + 2 * kLanes) == firsts) & (load(tail + 2 * kLanes) == lasts)) |
        ((load(head + 3 * kLanes) == firsts) & (load(tail + 3 * kLanes) == lasts));
    if (!any(candidates)) {
      continue;
    }
    for (std::size_t i = at; i < at + kBlock; ++i) {
      if (standsAt(i)) {
        return i;
      }
    }
  }
  for (; at < end; ++at) {
    if (standsAt(at)) {
      return at;
    }
  }
  return kNotFound;
}

std::size_t findLineEnd(std::u16string_view text, std::size_t from, std::size_t limit) {
  limit = std::min(limit, text.size());
  std::size_t at = from;
  for (; at < limit && limit - at >= kLanes; at += kLanes) {
    if (any(lineEndMask(load(text.data() + at)))) {
      break;
    }
  }
  for (; at < limit; ++at) {
    if (isLineEnd(text[at])) {
      return at;
    }
  }
  return kNotFound;
}

std::size_t lineStart(std::u16string_view text, std::size_t position, std::size_t from) {
  while (position > from && !isLineEnd(text[position - 1])) {
    --position;
  }
  return position;
}

}  // namespace veltramoor
