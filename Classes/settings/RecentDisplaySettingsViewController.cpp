#include "settings/RecentDisplaySettingsViewController.h"

#include "PreferencesKeys.h"
#include "toolkit/SharedInstances.h"

namespace veltramoor {

RecentDisplaySettingsViewController::RecentDisplaySettingsViewController()
    : DisplaySettingsViewController({.category = std::string(PreferencesKeys::recentCategory),
                                     .order = std::string(PreferencesKeys::recentOrderBy),
                                     .sort = std::string(PreferencesKeys::recentSortBy)}) {
  setTitle(tr("Recent Settings"));
}

std::shared_ptr<RecentDisplaySettingsViewController>
RecentDisplaySettingsViewController::sharedInstance() {
  return SharedInstances::pointer<RecentDisplaySettingsViewController>();
}

void RecentDisplaySettingsViewController::didSelectRow(int row, int component) {
  DisplaySettingsViewController::didSelectRow(row, component);
  if (component != kGroups || row < 0 || row >= numberOfRows(kGroups)) {
    return;
  }
  const bool all = selectedGroup() == 0;
  if (all) {
    order()->setSelectedSegment(0);
    sort()->setSelectedSegment(0);
  } else {
    showStoredOrder();
  }
  for (int segment = 1; segment < order()->titles().size(); ++segment) {
    order()->setEnabled(segment, !all);
  }
  sort()->setEnabled(1, !all);
}

QString RecentDisplaySettingsViewController::remark() const {
  return selectedGroup() == 0 ? tr("The site sorts only within a category.") : QString();
}

}  // namespace veltramoor
