// From a listing page to its rows.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "site/Torrent.h"

namespace veltramoor {

/// The expression that one row of the site's result table matches.
extern const std::string_view kTorrentRowRegex;

/// Rows of `page` (UTF-8) in page order; none when the page has another layout or cannot be matched
/// in time. A row whose name is in `history` is marked as downloaded.
[[nodiscard]] std::vector<Torrent> torrentsInPage(std::string_view page,
                                                  const std::vector<std::string>& history);

}  // namespace veltramoor
