#include "settings/FavoriteDisplaySettingsViewController.h"

#include <mutex>

#include "PreferencesKeys.h"

namespace veltramoor {

FavoriteDisplaySettingsViewController::FavoriteDisplaySettingsViewController()
    : DisplaySettingsViewController(
          tr("Favorite Settings"),
          {std::string(PreferencesKeys::favoriteCategory), std::string(PreferencesKeys::orderBy),
           std::string(PreferencesKeys::sortBy)}) {}

std::shared_ptr<FavoriteDisplaySettingsViewController>
FavoriteDisplaySettingsViewController::sharedInstance() {
  static std::mutex mutex;
  const std::lock_guard lock(mutex);
  static const auto instance = std::make_shared<FavoriteDisplaySettingsViewController>();
  return instance;
}

}  // namespace veltramoor
