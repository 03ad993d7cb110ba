#include "settings/RecentDisplaySettingsViewController.h"

#include <mutex>

#include "PreferencesKeys.h"

namespace veltramoor {

RecentDisplaySettingsViewController::RecentDisplaySettingsViewController()
    : DisplaySettingsViewController(tr("Recent Settings"),
                                    {std::string(PreferencesKeys::recentCategory),
                                     std::string(PreferencesKeys::recentOrderBy),
                                     std::string(PreferencesKeys::recentSortBy)}) {}

std::shared_ptr<RecentDisplaySettingsViewController>
RecentDisplaySettingsViewController::sharedInstance() {
  static std::mutex mutex;
  const std::lock_guard lock(mutex);
  static const auto instance = std::make_shared<RecentDisplaySettingsViewController>();
  return instance;
}

void RecentDisplaySettingsViewController::didSelectRow(int row, int component) {
  DisplaySettingsViewController::didSelectRow(row, component);
  if (component != kGroups) {
    return;
  }
  const bool all = row == 0;
  if (all) {
    order()->setSelectedSegment(0);
    sort()->setSelectedSegment(0);
  }
  for (int segment = 1; segment < order()->titles().size(); ++segment) {
    order()->setEnabled(segment, !all);
  }
  sort()->setEnabled(1, !all);
}

}  // namespace veltramoor
