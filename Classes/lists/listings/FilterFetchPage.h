// Fetches one listing page and asks the favourite filters about it.
#pragma once

#include <memory>
#include <optional>
#include <vector>

#include "lists/listings/FilterSet.h"
#include "site/FetchPage.h"
#include "site/PageTrouble.h"
#include "site/Torrent.h"

namespace veltramoor {

/// A page with all its rows, and what the filters say of each.
struct FilteredPage {
  /// Absent when the transfer failed.
  std::optional<std::vector<Torrent>> torrents;
  /// As long as `torrents`: whether any filter accepts the row.
  std::vector<bool> accepted;
  /// Who said so.
  std::shared_ptr<const FilterSet> filters;
  /// Why there are no rows, before any was judged; absent when there are.
  std::optional<PageTrouble> trouble;
  /// The page's number, where one was given.
  int number = 0;

  /// Whether nothing is known of what the site has on this page.
  [[nodiscard]] bool failed() const { return !torrents || (trouble && !trouble->mayBeEmptyList()); }
};

/// Matches on the worker thread, so that no filter, however hostile, holds the screen's.
class FilterFetchPage final : public FetchPage<FilteredPage> {
 public:
  FilterFetchPage(std::optional<Url> url, std::shared_ptr<FilterSet> filters, Completion completion,
                  std::optional<DeliveryPlace> place = std::nullopt);

 private:
  void fetch() override;

  std::shared_ptr<FilterSet> filters_;
};

}  // namespace veltramoor
