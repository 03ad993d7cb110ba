// What the signed-in person has uploaded.
#pragma once

#include <deque>
#include <optional>
#include <string>

#include "lists/AllListViewController.h"

namespace veltramoor {

/// Main thread only.
class UploadListViewController : public veltramoor::AllListViewController {
  Q_OBJECT

 public:
  explicit UploadListViewController(TableViewStyle style);

  /// Fetches page 0 unless a page of whoever is signed in now has arrived before.
  void viewWillAppear() override;
  void loadedTorrents(std::optional<std::vector<Torrent>> page) override;

 protected:
  /// The user's name stands in it unescaped: a name that no URL may hold gives none.
  [[nodiscard]] std::optional<Url> pageUrl(int page) override;
  [[nodiscard]] QString emptyText() const override;
  [[nodiscard]] std::shared_ptr<ViewController> displaySettings() const override;

 private:
  using Name = std::optional<std::string>;
  // Whose uploads the rows are, and whose the pages under way will be, the oldest first.
  Name owner_;
  std::deque<Name> askedFor_;
};

}  // namespace veltramoor
