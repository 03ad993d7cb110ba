#include "lists/listings/FilterStore.h"

#include "PreferencesKeys.h"
#include "platform/Preferences.h"

namespace veltramoor {
namespace {

bool store(const std::vector<std::string>& regexes) {
  Preferences& preferences = Preferences::sharedInstance();
  const bool stored = preferences.setArray(PreferencesKeys::filters, regexes);
  preferences.synchronize();
  return stored;
}

}  // namespace

std::vector<std::string> FilterStore::regexes() {
  return Preferences::sharedInstance()
      .array(PreferencesKeys::filters)
      .value_or(std::vector<std::string>{});
}

bool FilterStore::append(const std::string& regex) {
  std::vector<std::string> all = regexes();
  all.push_back(regex);
  return store(all);
}

bool FilterStore::remove(std::size_t index) {
  std::vector<std::string> all = regexes();
  if (index >= all.size()) {
    return false;
  }
  all.erase(all.begin() + static_cast<std::ptrdiff_t>(index));
  return store(all);
}

}  // namespace veltramoor
