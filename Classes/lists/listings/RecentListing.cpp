#include "lists/listings/RecentListing.h"

#include <fmt/format.h>

#include "PreferencesKeys.h"

namespace veltramoor {

RecentListing::RecentListing()
    : Listing({PreferencesKeys::recentCategory, PreferencesKeys::recentOrderBy,
               PreferencesKeys::recentSortBy}) {}

std::optional<Url> RecentListing::pageUrl(int page) const {
  const std::string chosen = category();
  return onSite(chosen.empty() || chosen == "0"
                    ? fmt::format("/recent/{}", page)
                    : fmt::format("/browse/{}/{}/{}/", chosen, page, order()));
}

}  // namespace veltramoor
