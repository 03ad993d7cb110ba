#include "settings/Top100DisplaySettingsViewController.h"

#include "toolkit/SharedInstances.h"

namespace veltramoor {

Top100DisplaySettingsViewController::Top100DisplaySettingsViewController()
    : DisplaySettingsViewController({.category = std::string(PreferencesKeys::top100Category),
                                     .order = std::string(PreferencesKeys::top100OrderBy),
                                     .sort = std::string(PreferencesKeys::top100SortBy)}) {
  setTitle(tr("Top 100 Settings"));
  for (int i = OrderLabel; i <= SortControl; ++i) {
    infoView()->remove(0);
  }
  infoView()->at(0)->moveTo({20, 50});
}

std::shared_ptr<Top100DisplaySettingsViewController>
Top100DisplaySettingsViewController::sharedInstance() {
  return SharedInstances::pointer<Top100DisplaySettingsViewController>();
}

}  // namespace veltramoor
