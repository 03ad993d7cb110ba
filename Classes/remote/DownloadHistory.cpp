#include "remote/DownloadHistory.h"

#include <mutex>

#include "PreferencesKeys.h"
#include "platform/Preferences.h"

namespace veltramoor {
namespace {

// Held while the history is read, changed and written.
std::mutex& historyMutex() {
  static std::mutex mutex;
  return mutex;
}

}  // namespace

std::vector<std::string> DownloadHistory::names() {
  return Preferences::sharedInstance()
      .array(PreferencesKeys::torrentHistory)
      .value_or(std::vector<std::string>{});
}

bool DownloadHistory::append(const std::string& name) {
  const std::lock_guard lock(historyMutex());
  std::vector<std::string> history = names();
  history.push_back(name);
  if (history.size() > kMaximum) {
    history.erase(history.begin());
  }
  return Preferences::sharedInstance().setArray(PreferencesKeys::torrentHistory, history);
}

bool DownloadHistory::removeAt(std::size_t index) {
  const std::lock_guard lock(historyMutex());
  std::vector<std::string> history = names();
  if (index >= history.size()) {
    return true;
  }
  history.erase(history.begin() + static_cast<std::ptrdiff_t>(index));
  return Preferences::sharedInstance().setArray(PreferencesKeys::torrentHistory, history);
}

}  // namespace veltramoor
