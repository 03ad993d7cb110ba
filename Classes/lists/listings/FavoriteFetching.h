// The favourites' pages on their way.
#pragma once

#include <functional>
#include <memory>
#include <vector>

#include "lists/listings/FavoriteListing.h"
#include "lists/listings/FilterFetchPage.h"
#include "platform/OperationQueue.h"
#include "site/BatchDelivery.h"

namespace veltramoor {

/// Drops what no filter accepted from a page; `judged.torrents` must have been there.
[[nodiscard]] std::vector<Torrent> acceptedTorrents(FilteredPage judged);

/// Fetches the pages of a batch at once and hands them over in page order, each in its turn. Main
/// thread only.
class FavoriteFetching {
 public:
  /// The page that a batch's first one waits for: one that is in no batch. A batch that does hold
  /// it, far down the site's list, waits for itself and is never delivered.
  static constexpr int kNoPage = 999;
  using Show = std::function<void(FilteredPage)>;

  explicit FavoriteFetching(Show show);

  /// Queues the fetches of the batch; `owner`, whom this belongs to, lives until all have come.
  void fetch(const FavoriteListing& listing, const PageBatch& batch, std::shared_ptr<void> owner);
  /// The same for pages that need not follow each other; at least one.
  void fetchPages(const FavoriteListing& listing, const std::vector<int>& pages,
                  std::shared_ptr<void> owner);

  /// Of the batch under way, or of the last one.
  [[nodiscard]] int asked() const { return delivery_.asked(); }
  [[nodiscard]] int delivered() const { return delivery_.delivered(); }
  /// The numbers of those delivered that the site did not give, in page order, and why it did not
  /// give the first of them.
  [[nodiscard]] const std::vector<int>& failedPages() const { return failed_; }
  [[nodiscard]] int failed() const { return static_cast<int>(failed_.size()); }
  [[nodiscard]] const PageTrouble& trouble() const { return trouble_; }
  /// Pages asked for and not shown yet.
  [[nodiscard]] int outstanding() const { return delivery_.outstanding(); }
  /// Whether a fetch waits or runs, delivered or not.
  [[nodiscard]] bool isBusy() const { return operationQueueMultiple_.operationCount() > 0; }

 private:
  std::vector<int> failed_;
  PageTrouble trouble_;
  BatchDelivery<FilteredPage> delivery_;
  // Last, so that its threads are joined before anything else goes.
  OperationQueue operationQueueMultiple_{10};
};

}  // namespace veltramoor
