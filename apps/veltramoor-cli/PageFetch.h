// Listing pages, fetched by a command that has nothing else to do meanwhile.
#pragma once

#include <optional>
#include <vector>

#include "lists/listings/Listing.h"
#include "platform/Url.h"
#include "site/Torrent.h"

namespace veltramoor::cli {

/// The page's rows; absent after a failed transfer. Blocks.
[[nodiscard]] std::optional<std::vector<Torrent>> fetchRows(std::optional<Url> url);

/// Rows of a listing's pages, and whether all that were asked for and exist have come.
struct FetchedPages {
  /// Absent when not one page has come.
  std::optional<std::vector<Torrent>> rows;
  bool complete = true;
};

/// Fetches `count` pages of `listing` from `first`, one after another, up to the list's end or the
/// first failure. A first page that has an address of its own is asked for by that.
[[nodiscard]] FetchedPages fetchPages(const Listing& listing, int first, int count);

}  // namespace veltramoor::cli
