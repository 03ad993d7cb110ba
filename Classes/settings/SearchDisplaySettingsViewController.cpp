#include "settings/SearchDisplaySettingsViewController.h"

#include <mutex>

#include "PreferencesKeys.h"

namespace veltramoor {

SearchDisplaySettingsViewController::SearchDisplaySettingsViewController()
    : DisplaySettingsViewController(tr("Search Settings"),
                                    {std::string(PreferencesKeys::searchCategory),
                                     std::string(PreferencesKeys::searchOrderBy),
                                     std::string(PreferencesKeys::searchSortBy)}) {}

std::shared_ptr<SearchDisplaySettingsViewController>
SearchDisplaySettingsViewController::sharedInstance() {
  static std::mutex mutex;
  const std::lock_guard lock(mutex);
  static const auto instance = std::make_shared<SearchDisplaySettingsViewController>();
  return instance;
}

}  // namespace veltramoor
