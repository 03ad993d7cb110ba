// The top 100's choices.
#pragma once

#include <memory>

#include "settings/DisplaySettingsViewController.h"

namespace veltramoor {

/// The category alone: the site orders its top 100 itself.
class Top100DisplaySettingsViewController : public veltramoor::DisplaySettingsViewController {
  Q_OBJECT

 public:
  Top100DisplaySettingsViewController();

  static std::shared_ptr<Top100DisplaySettingsViewController> sharedInstance();
};

}  // namespace veltramoor
