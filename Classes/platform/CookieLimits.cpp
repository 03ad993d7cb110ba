#include "platform/CookieLimits.h"

#include <algorithm>
#include <numeric>
#include <unordered_map>

#include "platform/CookieLine.h"
#include "platform/CookieStorage.h"

namespace veltramoor {
namespace {

/// Whether cookies of `domain` may go to `host`.
bool isOf(std::string_view host, std::string_view domain) {
  return host.ends_with(domain) &&
         (host.size() == domain.size() || host[host.size() - domain.size() - 1] == '.');
}

}  // namespace

std::string limitDomainOf(const Cookie& cookie) {
  return lowerCaseDomain(cookie.domain).substr(cookie.domain.starts_with('.') ? 1 : 0);
}

std::vector<bool> keptWithinLimits(const std::vector<CookieRank>& ranks,
                                   std::string_view siteHost) {
  std::vector<bool> isSpared(ranks.size());
  for (std::size_t i = 0; i < ranks.size(); ++i) {
    isSpared[i] = ranks[i].isSession && isOf(siteHost, ranks[i].domain);
  }
  std::vector<std::size_t> worth(ranks.size());
  std::iota(worth.begin(), worth.end(), 0);
  std::ranges::sort(worth, [&](std::size_t a, std::size_t b) {
    return isSpared[a] != isSpared[b] ? isSpared[a] : ranks[a].setAt > ranks[b].setAt;
  });
  std::vector<bool> isKept(ranks.size());
  std::unordered_map<std::string_view, std::size_t> keptOf;
  std::size_t kept = 0;
  for (const std::size_t i : worth) {
    std::size_t& ofDomain = keptOf[ranks[i].domain];
    if (kept < kMostCookies && ofDomain < kMostCookiesOfADomain) {
      isKept[i] = true;
      ++kept;
      ++ofDomain;
    }
  }
  return isKept;
}

}  // namespace veltramoor
