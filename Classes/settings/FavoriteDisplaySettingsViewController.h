// The favourites' choices.
#pragma once

#include <memory>

#include "settings/DisplaySettingsViewController.h"

namespace veltramoor {

class FavoriteDisplaySettingsViewController : public veltramoor::DisplaySettingsViewController {
  Q_OBJECT

 public:
  FavoriteDisplaySettingsViewController();

  /// Made on first use.
  static std::shared_ptr<FavoriteDisplaySettingsViewController> sharedInstance();
};

}  // namespace veltramoor
