#include "PageFetch.h"

#include <algorithm>
#include <iterator>
#include <utility>

#include "site/HttpRequestRegExTorrent.h"

namespace veltramoor::cli {

std::optional<std::vector<Torrent>> fetchRows(std::optional<Url> url) {
  HttpRequestRegExTorrent request(std::move(url));
  request.request();
  return request.takeTorrents();
}

FetchedPages fetchPages(const Listing& listing, int first, int count) {
  FetchedPages fetched;
  bool more = true;
  for (int page = first; page < first + count && more; ++page) {
    auto rows = fetchRows(page == 0 ? listing.firstPageUrl() : listing.pageUrl(page));
    fetched.complete = rows.has_value();
    more = rows && rows->size() >= Listing::kFullPage;
    if (rows && fetched.rows) {
      std::ranges::move(*rows, std::back_inserter(*fetched.rows));
    } else if (rows) {
      fetched.rows = std::move(rows);
    }
  }
  return fetched;
}

}  // namespace veltramoor::cli
