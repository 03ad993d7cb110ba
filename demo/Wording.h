// How the demo site words numbers, dates and links.
#pragma once

#include <chrono>
#include <cstdint>
#include <string>
#include <string_view>

namespace veltramoor {

/// The site's fixed present, in UTC: what "Today" and "5 mins ago" are relative to.
inline constexpr std::chrono::sys_time<std::chrono::minutes> kDemoPresent =
    std::chrono::sys_days{std::chrono::year{2024} / 11 / 20} + std::chrono::minutes{18 * 60 + 30};

/// For text and double-quoted attributes. Some letters become named entities, as such sites do.
[[nodiscard]] std::string escapeHtml(std::string_view text);
/// Everything but letters, digits and "-._~" as %XX; with `plus` a blank becomes "+".
[[nodiscard]] std::string percentEncode(std::string_view text, bool plus = false);
/// A link for a double-quoted attribute as such sites write it: each "&" as it is.
[[nodiscard]] std::string linkMarkup(std::string_view link);
/// Takes %XX apart; what is no valid escape stays.
[[nodiscard]] std::string percentDecode(std::string_view text);
/// ASCII and Latin-1 letters in lower case.
[[nodiscard]] std::string foldCase(std::string_view text);
/// The last part of a details link: "Quiet_Harbour_(2009)".
[[nodiscard]] std::string slug(std::string_view name);

/// Markup: "701.2&nbsp;MiB".
[[nodiscard]] std::string sizeMarkup(std::uint64_t bytes);
/// Markup: "<b>5&nbsp;mins&nbsp;ago</b>", "Today&nbsp;14:03", "Y-day&nbsp;09:12",
/// "11-18&nbsp;14:03", "03-14&nbsp;2009".
[[nodiscard]] std::string dateMarkup(std::int64_t minutesAgo);
/// "2009-03-14 09:12:00 GMT".
[[nodiscard]] std::string fullDate(std::int64_t minutesAgo);

/// The magnet link as plain text: btih, dn and three tr parameters.
[[nodiscard]] std::string magnetLink(std::string_view infoHash, std::string_view name);

}  // namespace veltramoor
