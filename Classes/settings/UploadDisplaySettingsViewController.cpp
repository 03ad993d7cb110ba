#include "settings/UploadDisplaySettingsViewController.h"

namespace veltramoor {

UploadDisplaySettingsViewController::UploadDisplaySettingsViewController()
    : DisplaySettingsViewController({.category = std::string(PreferencesKeys::uploadCategory),
                                     .order = std::string(PreferencesKeys::uploadOrderBy),
                                     .sort = std::string(PreferencesKeys::uploadSortBy)}) {
  setTitle(tr("Uploads Settings"));
  infoView()->remove(CategoryPicker);
}

std::shared_ptr<UploadDisplaySettingsViewController>
UploadDisplaySettingsViewController::sharedInstance() {
  static const auto instance = std::make_shared<UploadDisplaySettingsViewController>();
  return instance;
}

}  // namespace veltramoor
