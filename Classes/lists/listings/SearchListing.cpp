#include "lists/listings/SearchListing.h"

#include <fmt/format.h>

#include "PreferencesKeys.h"
#include "Util/AbsentValue.h"
#include "Util/NSStringEscaping.h"

namespace veltramoor {

SearchListing::SearchListing()
    : Listing({PreferencesKeys::searchCategory, PreferencesKeys::searchOrderBy,
               PreferencesKeys::searchSortBy}) {}

void SearchListing::search(std::string_view text) {
  searchString_ = stringByAddingPercentEscapesInAscii(text);
}

std::optional<Url> SearchListing::pageUrl(int page) const {
  const std::string chosen = category();
  return onSite(fmt::format("/search/{}/{}/{}/{}", formatted(searchString_), page, order(),
                            chosen.empty() ? "0" : chosen));
}

}  // namespace veltramoor
