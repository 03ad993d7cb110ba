// The uploads' choices.
#pragma once

#include <memory>

#include "settings/DisplaySettingsViewController.h"

namespace veltramoor {

class UploadDisplaySettingsViewController : public veltramoor::DisplaySettingsViewController {
  Q_OBJECT

 public:
  UploadDisplaySettingsViewController();

  /// Made on first use; shows the stored choices of that moment and the person's since then.
  static std::shared_ptr<UploadDisplaySettingsViewController> sharedInstance();
};

}  // namespace veltramoor
