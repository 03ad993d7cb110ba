#include "lists/listings/Top100Listing.h"

#include "PreferencesKeys.h"

namespace veltramoor {

Top100Listing::Top100Listing() : Listing({PreferencesKeys::top100Category, {}, {}}) {}

std::optional<Url> Top100Listing::firstPageUrl() const {
  const std::string chosen = category();
  return onSite("/top/" + (chosen.empty() || chosen == "0" ? "all" : chosen));
}

}  // namespace veltramoor
