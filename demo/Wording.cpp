#include "demo/Wording.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>

namespace veltramoor {
namespace {

bool isAlphanumeric(char c) {
  return (c >= '0' && c <= '9') || (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z');
}

int hexValue(char c) {
  if (c >= '0' && c <= '9') return c - '0';
  if (c >= 'A' && c <= 'F') return c - 'A' + 10;
  if (c >= 'a' && c <= 'f') return c - 'a' + 10;
  return -1;
}

}  // namespace

std::string escapeHtml(std::string_view text) {
  constexpr std::array<std::pair<std::string_view, std::string_view>, 7> kEntities{
      {{"&", "&amp;"},
       {"<", "&lt;"},
       {">", "&gt;"},
       {"\"", "&quot;"},
       {"'", "&#39;"},
       {"é", "&eacute;"},
       {"ü", "&uuml;"}}};
  std::string escaped;
  escaped.reserve(text.size() + text.size() / 4);
  while (!text.empty()) {
    std::size_t taken = 0;
    for (const auto& [letter, entity] : kEntities) {
      if (text.starts_with(letter)) {
        escaped += entity;
        taken = letter.size();
        break;
      }
    }
    if (taken == 0) {
      escaped += text.front();
      taken = 1;
    }
    text.remove_prefix(taken);
  }
  return escaped;
}

std::string percentEncode(std::string_view text, bool plus) {
  constexpr std::string_view kHex = "0123456789ABCDEF";
  std::string encoded;
  encoded.reserve(text.size() + text.size() / 2);
  for (const char c : text) {
    if (isAlphanumeric(c) || std::string_view("-._~").find(c) != std::string_view::npos) {
      encoded += c;
    } else if (plus && c == ' ') {
      encoded += '+';
    } else {
      const auto byte = static_cast<unsigned char>(c);
      encoded += '%';
      encoded += kHex[byte >> 4U];
      encoded += kHex[byte & 15U];
    }
  }
  return encoded;
}

std::string linkMarkup(std::string_view link) {
  std::string markup;
  for (std::size_t end = 0; end < link.size();) {
    const std::size_t begin = end;
    end = std::min(link.find('&', begin), link.size());
    markup += escapeHtml(link.substr(begin, end - begin));
    if (end < link.size()) {
      markup += link[end++];
    }
  }
  return markup;
}

std::string percentDecode(std::string_view text) {
  std::string decoded;
  decoded.reserve(text.size());
  for (std::size_t i = 0; i < text.size(); ++i) {
    const int high = text[i] == '%' && i + 2 < text.size() ? hexValue(text[i + 1]) : -1;
    const int low = high >= 0 ? hexValue(text[i + 2]) : -1;
    if (low >= 0) {
      decoded += static_cast<char>(high * 16 + low);
      i += 2;
    } else {
      decoded += text[i];
    }
  }
  return decoded;
}

std::string foldCase(std::string_view text) {
  std::string folded(text);
  for (std::size_t i = 0; i < folded.size(); ++i) {
    const auto byte = static_cast<unsigned char>(folded[i]);
    const bool latin1 = i > 0 && static_cast<unsigned char>(folded[i - 1]) == 0xC3;
    // U+00C0 to U+00DE are C3 80 to C3 9E; the multiplication sign among them has no lower case.
    if ((byte >= 'A' && byte <= 'Z') || (latin1 && byte >= 0x80 && byte <= 0x9E && byte != 0x97)) {
      folded[i] = static_cast<char>(byte + 0x20);
    }
  }
  return folded;
}

std::string slug(std::string_view name) {
  std::string result;
  for (const char c : name) {
    if (isAlphanumeric(c) || std::string_view("-.()").find(c) != std::string_view::npos) {
      result += c;
    } else if (result.empty() || result.back() != '_') {
      result += '_';
    }
  }
  return result;
}

std::string sizeMarkup(std::uint64_t bytes) {
  constexpr std::array<std::string_view, 4> kUnits{"B", "KiB", "MiB", "GiB"};
  std::size_t unit = 0;
  std::uint64_t divisor = 1;
  while (unit + 1 < kUnits.size() && bytes / divisor >= 1024) {
    divisor *= 1024;
    ++unit;
  }
  if (unit == 0) {
    return fmt::format("{}&nbsp;B", bytes);
  }
  const std::uint64_t tenths = bytes * 10 / divisor;
  return fmt::format("{}.{}&nbsp;{}", tenths / 10, tenths % 10, kUnits[unit]);
}

std::string dateMarkup(std::int64_t minutesAgo) {
  using namespace std::chrono;
  if (minutesAgo < 60) {
    return fmt::format("<b>{}&nbsp;min{}&nbsp;ago</b>", minutesAgo, minutesAgo == 1 ? "" : "s");
  }
  const auto when = kDemoPresent - minutes{minutesAgo};
  const auto day = floor<days>(when);
  const year_month_day date{day};
  const hh_mm_ss time{when - day};
  const auto today = floor<days>(kDemoPresent);
  const auto clock = fmt::format("{:02}:{:02}", time.hours().count(), time.minutes().count());
  if (day == today) return "Today&nbsp;" + clock;
  if (day == today - days{1}) return "Y-day&nbsp;" + clock;
  const auto monthDay = fmt::format("{:02}-{:02}", unsigned{date.month()}, unsigned{date.day()});
  if (date.year() == year_month_day{today}.year()) return monthDay + "&nbsp;" + clock;
  return fmt::format("{}&nbsp;{}", monthDay, int{date.year()});
}

std::string fullDate(std::int64_t minutesAgo) {
  using namespace std::chrono;
  const auto when = kDemoPresent - minutes{minutesAgo};
  const year_month_day date{floor<days>(when)};
  const hh_mm_ss time{when - floor<days>(when)};
  return fmt::format("{}-{:02}-{:02} {:02}:{:02}:00 GMT", int{date.year()}, unsigned{date.month()},
                     unsigned{date.day()}, time.hours().count(), time.minutes().count());
}

std::string magnetLink(std::string_view infoHash, std::string_view name) {
  return fmt::format(
      "magnet:?xt=urn:btih:{}&dn={}&tr=udp%3A%2F%2Ftracker.example%3A6969"
      "&tr=udp%3A%2F%2Fopen.tracker.example%3A80&tr=http%3A%2F%2Ftracker.example%2Fannounce",
      infoHash, percentEncode(name, true));
}

}  // namespace veltramoor
