#include "settings/SearchDisplaySettingsViewController.h"

namespace veltramoor {

SearchDisplaySettingsViewController::SearchDisplaySettingsViewController()
    : DisplaySettingsViewController({.category = std::string(PreferencesKeys::searchCategory),
                                     .order = std::string(PreferencesKeys::searchOrderBy),
                                     .sort = std::string(PreferencesKeys::searchSortBy)}) {
  setTitle(tr("Search Settings"));
}

std::shared_ptr<SearchDisplaySettingsViewController>
SearchDisplaySettingsViewController::sharedInstance() {
  static const auto instance = std::make_shared<SearchDisplaySettingsViewController>();
  return instance;
}

}  // namespace veltramoor
