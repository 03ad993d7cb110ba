// How many cookies are kept, and which go first.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace veltramoor {

struct Cookie;

/// RFC 6265 section 6.1 asks for at least 3000, and 50 of a domain. The hosts below a domain count
/// each for itself; a leading dot makes no difference.
inline constexpr std::size_t kMostCookies = 3000;
inline constexpr std::size_t kMostCookiesOfADomain = 180;

/// What `kMostCookiesOfADomain` counts by: the domain in lower case without a leading dot.
[[nodiscard]] std::string limitDomainOf(const Cookie& cookie);

/// What decides which cookies go.
struct CookieRank {
  /// As `limitDomainOf` has it.
  std::string_view domain;
  bool isSession;
  /// Counts up with each cookie that is set.
  std::uint64_t setAt;
};

/// Which of `ranks` are within the limits: those set last, and before all others the session
/// cookies of `siteHost` (no port), without which the person is signed out.
[[nodiscard]] std::vector<bool> keptWithinLimits(const std::vector<CookieRank>& ranks,
                                                 std::string_view siteHost);

}  // namespace veltramoor
