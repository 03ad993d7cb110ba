// The top 100's choice.
#pragma once

#include <memory>

#include "settings/DisplaySettingsViewController.h"

namespace veltramoor {

class Top100DisplaySettingsViewController : public veltramoor::DisplaySettingsViewController {
  Q_OBJECT

 public:
  Top100DisplaySettingsViewController();

  /// Made on first use; shows the stored choices of that moment and the person's since then.
  static std::shared_ptr<Top100DisplaySettingsViewController> sharedInstance();
};

}  // namespace veltramoor
