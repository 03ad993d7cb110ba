#include "settings/UploadDisplaySettingsViewController.h"

#include <mutex>

#include "PreferencesKeys.h"

namespace veltramoor {

UploadDisplaySettingsViewController::UploadDisplaySettingsViewController()
    : DisplaySettingsViewController(tr("Uploads Settings"),
                                    {std::string(PreferencesKeys::uploadCategory),
                                     std::string(PreferencesKeys::uploadOrderBy),
                                     std::string(PreferencesKeys::uploadSortBy)}) {}

std::shared_ptr<UploadDisplaySettingsViewController>
UploadDisplaySettingsViewController::sharedInstance() {
  static std::mutex mutex;
  const std::lock_guard lock(mutex);
  static const auto instance = std::make_shared<UploadDisplaySettingsViewController>();
  return instance;
}

}  // namespace veltramoor
