#include "lists/listings/Listing.h"

#include <utility>

#include "lists/listings/SiteCodes.h"
#include "lists/listings/SortedOrder.h"
#include "platform/Preferences.h"
#include "platform/SiteConfiguration.h"

namespace veltramoor {

std::optional<std::string> Listing::setting(std::string_view key) const {
  const auto found = overrides_.find(key);
  return found != overrides_.end() ? found->second : Preferences::sharedInstance().string(key);
}

void Listing::overrideSetting(std::string_view key, std::string value) {
  overrides_.insert_or_assign(std::string(key), std::move(value));
}

std::string Listing::category() const {
  return keys_.category.empty() ? "" : setting(keys_.category).value_or("");
}

std::string Listing::order() const {
  return sortedOrder(setting(keys_.order), setting(keys_.sort));
}

bool Listing::isNarrowed() const {
  const std::string chosen = category();
  return !chosen.empty() && chosen != "0";
}

std::string Listing::choiceInWords() const {
  std::string words = isNarrowed() ? categoryInWords(category()) : "";
  const std::string by = isOrdered() ? orderInWords(setting(keys_.order).value_or(""),
                                                    setting(keys_.sort).value_or(""))
                                     : "";
  words += words.empty() || by.empty() ? by : "; " + by;
  return words;
}

std::optional<Url> Listing::onSite(std::string_view path) {
  return SiteConfiguration::current().siteUrl(path);
}

}  // namespace veltramoor
