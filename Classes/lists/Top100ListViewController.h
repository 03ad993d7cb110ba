// The site's 100 best seeded torrents of a category.
#pragma once

#include "lists/AllListViewController.h"

namespace veltramoor {

/// One page of up to 100 rows. Being longer than a page of the site, it has a row after its last,
/// which asks for the recent list's next page and appends it. Main thread only.
class Top100ListViewController : public veltramoor::AllListViewController {
  Q_OBJECT

 public:
  explicit Top100ListViewController(TableViewStyle style);

  void fetchTop100List();
  /// The row after the last torrent is a torrent's cell that is not filled: empty when new, else as
  /// it was.
  void cellForRowAtIndexPath(int row, veltramoor::TorrentItemTableViewCell* cell) override;
  [[nodiscard]] bool drawsLoadMoreItem() const override { return false; }

 protected:
  [[nodiscard]] std::shared_ptr<ViewController> displaySettings() const override;
};

}  // namespace veltramoor
