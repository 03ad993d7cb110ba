#include "Util/Utf.h"

#include <unicode/utf16.h>
#include <unicode/utf8.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstring>

namespace veltramoor {
namespace {

/// Pages are nearly all ASCII, so text is looked at in blocks of this many units. A fixed length
/// lets the compiler turn the loops below into vector instructions without a remainder.
constexpr std::size_t kBlock = 64;
/// Converted text is gathered here and appended: growing the result itself would fill it with zeros
/// first, which costs more than the conversion.
constexpr std::size_t kChunk = 1024;
constexpr UChar32 kReplacement = 0xFFFD;

/// Whether the `count` units (a multiple of 8) at `units` are ASCII.
template <std::size_t count, typename Unit>
bool isAsciiBlock(const Unit* units) {
  constexpr std::uint64_t kMask = sizeof(Unit) == 1 ? 0x8080808080808080U : 0xFF80FF80FF80FF80U;
  std::array<std::uint64_t, count * sizeof(Unit) / 8> words;
  std::memcpy(words.data(), units, sizeof(words));
  std::uint64_t all = 0;
  for (const std::uint64_t word : words) {
    all |= word;
  }
  return (all & kMask) == 0;
}

template <std::size_t count, typename From, typename To>
void copyAsciiBlock(const From* from, To* to) {
  for (std::size_t i = 0; i < count; ++i) {
    to[i] = static_cast<To>(from[i]);
  }
}

// ICU's macros convert between signs without casts.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wconversion"
#pragma GCC diagnostic ignored "-Wsign-conversion"

/// The character at `i`, advancing past it; negative when malformed (one maximal ill-formed part is
/// passed).
UChar32 nextCharacter(std::string_view text, std::size_t& i) {
  UChar32 character = 0;
  U8_NEXT(text.data(), i, text.size(), character);
  return character;
}

UChar32 nextCharacter(std::u16string_view text, std::size_t& i) {
  UChar32 character = 0;
  U16_NEXT(text.data(), i, text.size(), character);
  return U_IS_SURROGATE(character) ? U_SENTINEL : character;
}

void appendCharacter(UChar32 character, char16_t* out, std::size_t& used) {
  U16_APPEND_UNSAFE(out, used, character);
}

void appendCharacter(UChar32 character, char* out, std::size_t& used) {
  U8_APPEND_UNSAFE(out, used, character);
}
#pragma GCC diagnostic pop

/// Appends `text` to `result` in the other encoding.
template <typename From, typename Result>
void convert(std::basic_string_view<From> text, Result& result) {
  std::array<typename Result::value_type, kChunk> chunk;
  std::size_t used = 0;
  std::size_t i = 0;
  while (i < text.size()) {
    if (used + 4 * kBlock > kChunk) {
      result.append(chunk.data(), used);
      used = 0;
    }
    if (text.size() - i >= kBlock && isAsciiBlock<kBlock>(text.data() + i)) {
      copyAsciiBlock<kBlock>(text.data() + i, chunk.data() + used);
      i += kBlock;
      used += kBlock;
      continue;
    }
    const std::size_t stop = std::min(i + kBlock, text.size());
    while (i < stop) {
      if (stop - i >= 8 && isAsciiBlock<8>(text.data() + i)) {
        copyAsciiBlock<8>(text.data() + i, chunk.data() + used);
        i += 8;
        used += 8;
        continue;
      }
      for (const std::size_t part = std::min(i + 8, stop); i < part;) {
        const UChar32 character = nextCharacter(text, i);
        appendCharacter(character < 0 ? kReplacement : character, chunk.data(), used);
      }
    }
  }
  result.append(chunk.data(), used);
}

}  // namespace

bool isValidUtf8(std::string_view bytes) {
  std::size_t i = 0;
  while (i < bytes.size()) {
    if (bytes.size() - i >= kBlock && isAsciiBlock<kBlock>(bytes.data() + i)) {
      i += kBlock;
      continue;
    }
    const std::size_t stop = std::min(i + kBlock, bytes.size());
    while (i < stop) {
      if (stop - i >= 8 && isAsciiBlock<8>(bytes.data() + i)) {
        i += 8;
      } else if (nextCharacter(bytes, i) < 0) {
        return false;
      }
    }
  }
  return true;
}

bool isAscii(std::string_view bytes) {
  std::size_t i = 0;
  for (; bytes.size() - i >= kBlock; i += kBlock) {
    if (!isAsciiBlock<kBlock>(bytes.data() + i)) {
      return false;
    }
  }
  return std::all_of(bytes.begin() + static_cast<std::ptrdiff_t>(i), bytes.end(),
                     [](char byte) { return static_cast<unsigned char>(byte) < 0x80; });
}

std::size_t utf16Length(std::string_view text) {
  std::size_t length = 0;
  std::size_t i = 0;
  while (i < text.size()) {
    if (text.size() - i >= kBlock && isAsciiBlock<kBlock>(text.data() + i)) {
      i += kBlock;
      length += kBlock;
      continue;
    }
    const std::size_t stop = std::min(i + kBlock, text.size());
    for (; i < stop; ++i) {
      const auto byte = static_cast<unsigned char>(text[i]);
      length += (byte & 0xC0U) != 0x80U ? 1 : 0;
      length += byte >= 0xF0U ? 1 : 0;
    }
  }
  return length;
}

std::u16string utf16FromUtf8(std::string_view text) {
  std::u16string result;
  assignUtf16(result, text);
  return result;
}

void assignUtf16(std::u16string& buffer, std::string_view text) {
  buffer.clear();
  // Never fewer units than needed: each takes at least one byte.
  buffer.reserve(text.size());
  convert(text, buffer);
}

std::string utf8FromUtf16(std::u16string_view text) {
  std::string result;
  result.reserve(text.size() + text.size() / 8);
  convert(text, result);
  return result;
}

}  // namespace veltramoor
