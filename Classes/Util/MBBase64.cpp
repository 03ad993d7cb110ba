#include "Util/MBBase64.h"

#include <array>
#include <cstdint>
#include <stdexcept>

namespace veltramoor {
namespace {

constexpr std::string_view kAlphabet =
    "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
constexpr std::uint8_t kSkipped = 64;
constexpr std::uint8_t kForeign = 65;

consteval std::array<std::uint8_t, 256> decodingTable() {
  std::array<std::uint8_t, 256> table{};
  table.fill(kForeign);
  for (const char skipped : std::string_view(" \t\n\v\f\r=")) {
    table.at(static_cast<unsigned char>(skipped)) = kSkipped;
  }
  for (std::size_t i = 0; i < kAlphabet.size(); ++i) {
    table.at(static_cast<unsigned char>(kAlphabet[i])) = static_cast<std::uint8_t>(i);
  }
  return table;
}

constexpr auto kDecoding = decodingTable();

std::uint32_t byteAt(std::string_view bytes, std::size_t index) {
  return index < bytes.size() ? static_cast<unsigned char>(bytes[index]) : 0U;
}

}  // namespace

std::string base64Encoding(std::string_view bytes) {
  std::string text;
  text.reserve((bytes.size() + 2) / 3 * 4);
  for (std::size_t i = 0; i < bytes.size(); i += 3) {
    const std::uint32_t group =
        byteAt(bytes, i) << 16U | byteAt(bytes, i + 1) << 8U | byteAt(bytes, i + 2);
    text += kAlphabet[group >> 18U];
    text += kAlphabet[group >> 12U & 63U];
    text += i + 1 < bytes.size() ? kAlphabet[group >> 6U & 63U] : '=';
    text += i + 2 < bytes.size() ? kAlphabet[group & 63U] : '=';
  }
  return text;
}

std::optional<std::string> dataWithBase64EncodedString(
    const std::optional<std::string_view>& text) {
  if (!text) {
    throw std::invalid_argument("no text to decode");
  }
  std::string bytes;
  bytes.reserve(text->size() / 4 * 3 + 2);
  std::uint32_t group = 0;
  unsigned characters = 0;
  for (const char character : *text) {
    const std::uint8_t value = kDecoding[static_cast<unsigned char>(character)];
    if (value == kForeign) {
      return std::nullopt;
    }
    if (value == kSkipped) {
      continue;
    }
    group = group << 6U | value;
    if (++characters == 4) {
      bytes += static_cast<char>(group >> 16U & 255U);
      bytes += static_cast<char>(group >> 8U & 255U);
      bytes += static_cast<char>(group & 255U);
      group = 0;
      characters = 0;
    }
  }
  if (characters == 1) {
    return std::nullopt;
  }
  if (characters == 2) {
    bytes += static_cast<char>(group >> 4U & 255U);
  } else if (characters == 3) {
    bytes += static_cast<char>(group >> 10U & 255U);
    bytes += static_cast<char>(group >> 2U & 255U);
  }
  return bytes;
}

}  // namespace veltramoor
