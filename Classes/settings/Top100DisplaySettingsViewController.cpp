#include "settings/Top100DisplaySettingsViewController.h"

#include <mutex>

#include "PreferencesKeys.h"

namespace veltramoor {

Top100DisplaySettingsViewController::Top100DisplaySettingsViewController()
    : DisplaySettingsViewController(tr("Top 100 Settings"),
                                    {std::string(PreferencesKeys::top100Category),
                                     std::string(PreferencesKeys::top100OrderBy),
                                     std::string(PreferencesKeys::top100SortBy)}) {}

std::shared_ptr<Top100DisplaySettingsViewController>
Top100DisplaySettingsViewController::sharedInstance() {
  static std::mutex mutex;
  const std::lock_guard lock(mutex);
  static const auto instance = std::make_shared<Top100DisplaySettingsViewController>();
  return instance;
}

}  // namespace veltramoor
