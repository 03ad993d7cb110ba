#include "settings/SearchDisplaySettingsViewController.h"

#include "toolkit/SharedInstances.h"

namespace veltramoor {

SearchDisplaySettingsViewController::SearchDisplaySettingsViewController()
    : DisplaySettingsViewController({.category = std::string(PreferencesKeys::searchCategory),
                                     .order = std::string(PreferencesKeys::searchOrderBy),
                                     .sort = std::string(PreferencesKeys::searchSortBy)}) {
  setTitle(tr("Search Settings"));
}

std::shared_ptr<SearchDisplaySettingsViewController>
SearchDisplaySettingsViewController::sharedInstance() {
  return SharedInstances::pointer<SearchDisplaySettingsViewController>();
}

}  // namespace veltramoor
