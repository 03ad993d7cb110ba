#include "lists/listings/FilterStore.h"

#include "PreferencesKeys.h"
#include "platform/Preferences.h"

namespace veltramoor {

std::vector<std::string> FilterStore::regexes() {
  return Preferences::sharedInstance()
      .array(PreferencesKeys::filters)
      .value_or(std::vector<std::string>{});
}

bool FilterStore::append(const std::string& regex) {
  return Preferences::sharedInstance().appendToArray(PreferencesKeys::filters, regex);
}

bool FilterStore::remove(std::size_t index, const std::string& regex) {
  return Preferences::sharedInstance().removeFromArray(PreferencesKeys::filters, index, regex);
}

bool FilterStore::insertAt(const ArrayPlace& place, const std::string& regex) {
  return Preferences::sharedInstance().insertIntoArray(PreferencesKeys::filters, place, regex);
}

}  // namespace veltramoor
