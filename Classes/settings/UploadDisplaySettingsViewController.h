// The choices for a list of uploads.
#pragma once

#include <memory>

#include "settings/DisplaySettingsViewController.h"

namespace veltramoor {

/// Order and sort alone: the site lists an account's uploads whatever their category.
class UploadDisplaySettingsViewController : public veltramoor::DisplaySettingsViewController {
  Q_OBJECT

 public:
  UploadDisplaySettingsViewController();

  static std::shared_ptr<UploadDisplaySettingsViewController> sharedInstance();
};

}  // namespace veltramoor
