#include "remote/DownloadHistory.h"

#include "PreferencesKeys.h"
#include "platform/Preferences.h"

namespace veltramoor {
std::vector<std::string> DownloadHistory::names() {
  return Preferences::sharedInstance()
      .array(PreferencesKeys::torrentHistory)
      .value_or(std::vector<std::string>{});
}

bool DownloadHistory::append(const std::string& name) {
  return Preferences::sharedInstance().appendToArray(PreferencesKeys::torrentHistory, name,
                                                     kMaximum, Preferences::Refusal::LeftToCaller);
}

bool DownloadHistory::removeAt(std::size_t index, const std::string& name) {
  return Preferences::sharedInstance().removeFromArray(PreferencesKeys::torrentHistory, index,
                                                       name);
}

bool DownloadHistory::insertAt(const ArrayPlace& place, const std::string& name) {
  return Preferences::sharedInstance().insertIntoArray(PreferencesKeys::torrentHistory, place, name,
                                                       kMaximum);
}

}  // namespace veltramoor
