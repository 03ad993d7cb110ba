// The recent list's choices.
#pragma once

#include <memory>

#include "settings/DisplaySettingsViewController.h"

namespace veltramoor {

/// Without a category the site sorts the recent torrents by date alone: choosing the group "All"
/// shows that and holds the other choices back. What is stored stays, and any other group shows it
/// again.
class RecentDisplaySettingsViewController : public veltramoor::DisplaySettingsViewController {
  Q_OBJECT

 public:
  RecentDisplaySettingsViewController();

  static std::shared_ptr<RecentDisplaySettingsViewController> sharedInstance();

  void didSelectRow(int row, int component) override;
  [[nodiscard]] QString remark() const override;
};

}  // namespace veltramoor
