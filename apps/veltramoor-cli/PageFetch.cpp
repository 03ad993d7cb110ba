#include "PageFetch.h"

#include <algorithm>
#include <iterator>
#include <utility>

#include "ListOutput.h"
#include "lists/listings/RecentListing.h"
#include "site/HttpRequestRegExTorrent.h"

namespace veltramoor::cli {

bool FetchedRows::hasFailed() const { return !rows || isFailure(trouble); }

FetchedRows fetchRows(std::optional<Url> url) {
  HttpRequestRegExTorrent request(std::move(url));
  request.request();
  return {.rows = request.takeTorrents(), .trouble = request.trouble()};
}

FetchedRows fetchRecentPage(int page) {
  RecentListing listing;
  listing.overrideSetting(listing.keys().category, "0");
  return fetchRows(listing.pageUrl(page));
}

FetchedPages fetchPages(const Listing& listing, int first, int count) {
  FetchedPages fetched;
  bool more = true;
  for (int page = first; page < first + count && more; ++page) {
    FetchedRows came = fetchRows(page == 0 ? listing.firstPageUrl() : listing.pageUrl(page));
    fetched.lastPage = page;
    fetched.trouble = came.trouble;
    fetched.hasFailed = came.hasFailed();
    if (came.rows) {
      std::ranges::move(*came.rows, std::back_inserter(fetched.rows));
    }
    more = !fetched.hasFailed && came.rows->size() >= Listing::kFullPage;
  }
  return fetched;
}

}  // namespace veltramoor::cli
