// What the terminal says of lists, and what it remembers of the last one.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "site/PageTrouble.h"
#include "site/Torrent.h"

namespace veltramoor::cli {

/// Remembers the rows for `send`, as those of `title` ("search "debian""), and prints them: one
/// line a torrent in aligned columns, numbered from 1, or a JSON array of the records. When they
/// could not be stored, standard error says so, and the exit status returned is no success.
int rememberAndPrint(const std::string& title, const std::vector<Torrent>& torrents, bool json);

/// So many rows of a listing are remembered.
inline constexpr std::size_t kRememberedRows = 1000;

/// The listing that was printed last, by this program or by an earlier run of it.
struct RememberedListing {
  struct Row {
    std::string name;
    std::string downloadUrl;
  };
  std::string title;
  std::vector<Row> rows;
};

/// Absent before the first listing.
[[nodiscard]] std::optional<RememberedListing> lastListing();

/// Says that page `page` of the recent list, of `rows` rows, has no row `row`; returns the exit
/// status.
int noSuchRow(int page, int row, std::size_t rows);

/// Says that no site is set; returns the exit status.
int failWithoutSite();

/// Whether a page with this trouble has failed, and is not only a list of nothing.
[[nodiscard]] bool isFailure(const std::optional<PageTrouble>& trouble);

/// Why a page did not come, in one or two sentences.
[[nodiscard]] std::string reasonOf(const PageTrouble& trouble);
/// Says so; returns the exit status.
int failToLoad(const PageTrouble& trouble);

}  // namespace veltramoor::cli
