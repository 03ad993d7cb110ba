// The search's choices.
#pragma once

#include <memory>

#include "settings/DisplaySettingsViewController.h"

namespace veltramoor {

/// Category, order and sort of what a search finds.
class SearchDisplaySettingsViewController : public veltramoor::DisplaySettingsViewController {
  Q_OBJECT

 public:
  SearchDisplaySettingsViewController();

  static std::shared_ptr<SearchDisplaySettingsViewController> sharedInstance();
};

}  // namespace veltramoor
