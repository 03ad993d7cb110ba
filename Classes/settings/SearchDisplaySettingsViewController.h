// The choices of searches.
#pragma once

#include <memory>

#include "settings/DisplaySettingsViewController.h"

namespace veltramoor {

class SearchDisplaySettingsViewController : public veltramoor::DisplaySettingsViewController {
  Q_OBJECT

 public:
  SearchDisplaySettingsViewController();

  /// Made on first use; shows the stored choices of that moment and the person's since then.
  static std::shared_ptr<SearchDisplaySettingsViewController> sharedInstance();
};

}  // namespace veltramoor
