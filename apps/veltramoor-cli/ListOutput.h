// What the terminal says of lists.
#pragma once

#include <cstddef>
#include <vector>

#include "site/Torrent.h"

namespace veltramoor::cli {

/// One line a torrent, numbered from 1, or a JSON array of the records.
void printRows(const std::vector<Torrent>& torrents, bool json);

/// Says that page `page` of the recent list, of `rows` rows, has no row `row`; returns the exit
/// status.
int noSuchRow(int page, int row, std::size_t rows);

/// Says that no site is set; returns the exit status.
int failWithoutSite();

/// Says that a page did not come; returns the exit status.
int failToLoad();

}  // namespace veltramoor::cli
