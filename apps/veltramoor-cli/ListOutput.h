// What the terminal says of lists.
#pragma once

#include <vector>

#include "site/Torrent.h"

namespace veltramoor::cli {

/// One line a torrent, numbered from 1, or a JSON array of the records.
void printRows(const std::vector<Torrent>& torrents, bool json);

/// Says that a page did not come; returns the exit status.
int failToLoad();

}  // namespace veltramoor::cli
