// The recent torrents that the person's filters accept.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "lists/AllListViewController.h"
#include "lists/FilterFetchPage.h"
#include "site/BatchDelivery.h"

namespace veltramoor {

/// Fetches several pages at once, shows them in page order, and drops every torrent that no filter
/// accepts. A torrent that moved between two pages while they were fetched is shown twice.
class FavoriteListViewController : public veltramoor::AllListViewController {
  Q_OBJECT
  Q_PROPERTY(int pagesAsked READ pagesAsked NOTIFY progressChanged)
  Q_PROPERTY(int pagesDelivered READ pagesDelivered NOTIFY progressChanged)

 public:
  /// The page that a batch's first one waits for: one that is in no batch. A batch that does hold
  /// it, far down the site's list, waits for itself and is never delivered.
  static constexpr int kNoPage = 999;

  explicit FavoriteListViewController(TableViewStyle style);

  void viewWillAppear() override;
  [[nodiscard]] bool hasBackgroundWork() const override;

  /// What "load more" calls: a batch that begins after `page`. That page itself is skipped.
  void fetchPage(int page) override;
  /// Queues the fetches of `count` (at least 1) pages from `startPage`.
  void fetchNextXPages(int count, int startPage);
  void loadedTorrents(std::optional<std::vector<Torrent>> page) override;
  void filterData(std::vector<Torrent>& page) override;

  void didRefresh() override;
  void didSettings() override;
  void didFilters() override;
  /// Takes the stored filters for the pages that are fetched from now on.
  void reloadFilters();

  /// Pages of a batch as stored, else 5; at least 1.
  [[nodiscard]] static int storedPages();
  /// Pages of a batch: as stored when the list was last shown.
  [[nodiscard]] int NUM_PAGES() const { return numPages_; }
  /// Of the batch under way, or of the last one.
  [[nodiscard]] int pagesAsked() const { return delivery_.asked(); }
  [[nodiscard]] int pagesDelivered() const { return delivery_.delivered(); }
  [[nodiscard]] const FilterSet& filters() const { return *filters_; }
  [[nodiscard]] OperationQueue& operationQueueMultiple() { return operationQueueMultiple_; }

 signals:
  void progressChanged();
  /// After the last page of a batch has been shown; whether any page came.
  void batchLoaded(bool arrived);

 protected:
  [[nodiscard]] std::optional<Url> pageUrl(int page) override;
  /// The same for a category code; "" and "0" are all categories.
  [[nodiscard]] static std::optional<Url> urlOf(const std::string& category, int page);
  [[nodiscard]] bool loadMoreTakesTouches() const override;
  [[nodiscard]] bool isBusy() const override { return delivery_.outstanding() > 0; }

 private:
  [[nodiscard]] QString loadingText() const override { return tr("Filtering..."); }
  void fetchPage(int page, int batch, DeliveryPlace place);
  void fetchFirstPage() override;
  void show(FilteredPage page);
  void remember(const std::vector<Torrent>& page);
  void batchEnded();
  [[nodiscard]] QString batchNotice();

  int numPages_ = 5;
  std::shared_ptr<FilterSet> filters_;
  /// The page that `loadedTorrents` is about, while it is.
  FilteredPage judged_;
  /// Names of the latest pages, accepted or not: what a new filter is tried on.
  std::vector<std::string> latestNames_;
  int failedPages_ = 0;
  BatchDelivery<FilteredPage> delivery_;
  // Last, so that its threads are joined before anything else goes.
  OperationQueue operationQueueMultiple_{10};
};

}  // namespace veltramoor
