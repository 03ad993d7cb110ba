// The recent torrents that the person's filters accept.
#pragma once

#include <memory>

#include "lists/listings/FilterSet.h"
#include "lists/listings/Listing.h"

namespace veltramoor {

/// Pages that are asked for together.
struct PageBatch {
  int start = 0;
  /// At least 1.
  int count = 1;
};

/// Batches of recent pages, and the filters that their torrents are tried on. Main thread only.
class FavoriteListing final : public Listing {
 public:
  FavoriteListing();

  [[nodiscard]] std::optional<Url> pageUrl(int page) const override;

  /// Pages of a batch as stored, else 5; at least 1.
  [[nodiscard]] static int storedPages();
  /// Pages of a batch.
  [[nodiscard]] int pages() const { return pages_; }
  void setPages(int pages) { pages_ = pages; }
  [[nodiscard]] PageBatch firstBatch();
  /// What follows `page`, which is skipped: the current page is the last one asked for, so that
  /// each "load more" skips one: 0 to 4, 6 to 10, 12 to 16 and so on.
  [[nodiscard]] PageBatch batchAfter(int page);

  [[nodiscard]] const std::shared_ptr<FilterSet>& filters() const { return filters_; }
  /// Takes the stored filters for the pages that are asked for from now on; whether they are
  /// others.
  bool reloadFilters();
  /// Gives a filter that was given up on, perhaps on a busy machine, another chance.
  void retryFilters();

 private:
  int pages_;
  std::shared_ptr<FilterSet> filters_;
};

}  // namespace veltramoor
