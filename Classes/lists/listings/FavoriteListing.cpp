#include "lists/listings/FavoriteListing.h"

#include <fmt/format.h>

#include <algorithm>

#include "PreferencesKeys.h"
#include "Util/IntegerValue.h"
#include "lists/listings/FilterStore.h"
#include "platform/Preferences.h"

namespace veltramoor {
namespace {

constexpr int kUsualPages = 5;

}  // namespace

FavoriteListing::FavoriteListing()
    : Listing({PreferencesKeys::favoriteCategory, {}, {}}),
      pages_(storedPages()),
      filters_(std::make_shared<FilterSet>(FilterStore::regexes())) {}

std::optional<Url> FavoriteListing::pageUrl(int page) const {
  const std::string chosen = category();
  return onSite(chosen.empty() || chosen == "0" ? fmt::format("/recent/{}", page)
                                                : fmt::format("/browse/{}/{}/3", chosen, page));
}

int FavoriteListing::storedPages() {
  const std::string text =
      Preferences::sharedInstance().string(PreferencesKeys::favoritesCount).value_or("");
  return text.empty() ? kUsualPages : std::max(1, integerValue(text));
}

PageBatch FavoriteListing::firstBatch() {
  setCurrentPage(pages_ - 1);
  return {.start = 0, .count = pages_};
}

PageBatch FavoriteListing::batchAfter(int page) {
  setCurrentPage(page + pages_);
  return {.start = page + 1, .count = pages_};
}

bool FavoriteListing::reloadFilters() {
  const std::vector<std::string> regexes = FilterStore::regexes();
  if (regexes == filters_->regexes()) {
    return false;
  }
  filters_ = std::make_shared<FilterSet>(regexes);
  return true;
}

void FavoriteListing::retryFilters() {
  filters_ = std::make_shared<FilterSet>(filters_->regexes());
}

}  // namespace veltramoor
