// What the signed-in person has uploaded.
#pragma once

#include <optional>
#include <string>

#include "lists/AllListViewController.h"

namespace veltramoor {

/// Main thread only.
class UploadListViewController : public veltramoor::AllListViewController {
  Q_OBJECT

 public:
  explicit UploadListViewController(TableViewStyle style);

  /// Fetches page 0 unless it has come, or is under way, for whoever is signed in now.
  void viewWillAppear() override;

 protected:
  [[nodiscard]] QString emptyText() const override;
  [[nodiscard]] std::shared_ptr<ViewController> displaySettings() const override;

 private:
  // Whose uploads these are.
  std::optional<std::string> owner_;
};

}  // namespace veltramoor
