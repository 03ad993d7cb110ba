#include "settings/UploadDisplaySettingsViewController.h"

#include "toolkit/SharedInstances.h"

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
  return SharedInstances::pointer<UploadDisplaySettingsViewController>();
}

}  // namespace veltramoor
