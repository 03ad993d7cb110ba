// The recent torrents that the person's filters accept.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "lists/AllListViewController.h"
#include "lists/listings/FavoriteFetching.h"

namespace veltramoor {

/// Fetches several pages at once, shows them in page order, and drops every torrent that no filter
/// accepts. A torrent that moved between two pages while they were fetched is shown twice.
class FavoriteListViewController : public veltramoor::AllListViewController {
  Q_OBJECT
  Q_PROPERTY(int pagesAsked READ pagesAsked NOTIFY progressChanged)
  Q_PROPERTY(int pagesDelivered READ pagesDelivered NOTIFY progressChanged)

 public:
  explicit FavoriteListViewController(TableViewStyle style);

  void viewWillAppear() override;
  [[nodiscard]] bool hasBackgroundWork() const override;

  /// What "load more" calls: a batch that begins after `page`. That page itself is skipped.
  void fetchPage(int page) override;
  /// Queues the fetches of `count` (at least 1) pages from `startPage`.
  void fetchNextXPages(int count, int startPage);
  void loadedTorrents(std::optional<std::vector<Torrent>> page,
                      const std::optional<PageTrouble>& trouble = std::nullopt) override;
  void filterData(std::vector<Torrent>& page) override;

  void didRefresh() override;
  void didSettings() override;
  void didFilters() override;
  void didTapNotice() override;
  /// Takes the stored filters for the pages that are fetched from now on.
  void reloadFilters();

  /// Pages of a batch: as stored when the list was last shown.
  [[nodiscard]] int NUM_PAGES() const { return favorites().pages(); }
  /// Of the batch under way, or of the last one.
  [[nodiscard]] int pagesAsked() const { return batches_.asked(); }
  [[nodiscard]] int pagesDelivered() const { return batches_.delivered(); }
  [[nodiscard]] const FilterSet& filters() const { return *favorites().filters(); }

 signals:
  void progressChanged();
  /// After the last page of a batch has been shown; whether any page came.
  void batchLoaded(bool arrived);

 protected:
  [[nodiscard]] bool loadMoreTakesTouches() const override;
  [[nodiscard]] bool isBusy() const override { return batches_.outstanding() > 0; }

 private:
  [[nodiscard]] QString loadingText() const override { return tr("Filtering..."); }
  [[nodiscard]] FavoriteListing& favorites() const;
  void fetchFirstPage() override;
  void fetch(const PageBatch& batch);
  /// Asks again for the pages of the last batch that did not come; their rows follow the others.
  void retry() override;
  void begin();
  void show(FilteredPage page);
  void remember(const std::vector<Torrent>& page);
  void batchEnded();
  [[nodiscard]] ListNotice batchNotice();

  // Whether the pages under way are ones that did not come at first: they say nothing about the
  // end.
  bool retrying_ = false;
  /// The page that `loadedTorrents` is about, while it is.
  FilteredPage judged_;
  /// Names of the latest pages, accepted or not: what a new filter is tried on.
  std::vector<std::string> latestNames_;
  // Last, so that its threads are joined before anything else goes.
  FavoriteFetching batches_;
};

}  // namespace veltramoor
