#include "remote/DownloadHistory.h"

#include <mutex>

#include "PreferencesKeys.h"
#include "platform/Preferences.h"

namespace veltramoor {

std::vector<std::string> DownloadHistory::names() {
  return Preferences::sharedInstance()
      .array(PreferencesKeys::torrentHistory)
      .value_or(std::vector<std::string>{});
}

bool DownloadHistory::append(const std::string& name) {
  static std::mutex mutex;
  const std::lock_guard lock(mutex);
  std::vector<std::string> history = names();
  history.push_back(name);
  if (history.size() > kMaximum) {
    history.erase(history.begin());
  }
  return Preferences::sharedInstance().setArray(PreferencesKeys::torrentHistory, history);
}

}  // namespace veltramoor
