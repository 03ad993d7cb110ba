// Listing pages, fetched by a command that has nothing else to do meanwhile.
#pragma once

#include <optional>
#include <vector>

#include "lists/listings/Listing.h"
#include "platform/Url.h"
#include "site/PageTrouble.h"
#include "site/Torrent.h"

namespace veltramoor::cli {

/// What came of a page.
struct FetchedRows {
  /// Absent when no page could be had or read.
  std::optional<std::vector<Torrent>> rows;
  /// Why the page gave no row; absent when it gave one.
  std::optional<PageTrouble> trouble;

  /// Whether the page did not come, and is not only one without rows.
  [[nodiscard]] bool hasFailed() const;
};

/// Blocks.
[[nodiscard]] FetchedRows fetchRows(std::optional<Url> url);

/// The recent list's page `page`, of all categories. Blocks.
[[nodiscard]] FetchedRows fetchRecentPage(int page);

/// What came of a listing's pages.
struct FetchedPages {
  /// Of all that came.
  std::vector<Torrent> rows;
  /// The last page that was asked for, counted from 0, and what came of it apart from its rows.
  int lastPage = 0;
  std::optional<PageTrouble> trouble;
  bool hasFailed = false;
};

/// Fetches `count` pages of `listing` from `first`, one after another, up to the list's end or the
/// first failure. A first page that has an address of its own is asked for by that.
[[nodiscard]] FetchedPages fetchPages(const Listing& listing, int first, int count);

}  // namespace veltramoor::cli
