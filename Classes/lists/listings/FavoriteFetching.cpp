#include "lists/listings/FavoriteFetching.h"

#include <algorithm>
#include <numeric>
#include <utility>

namespace veltramoor {

std::vector<Torrent> acceptedTorrents(FilteredPage judged) {
  std::size_t row = 0;
  std::erase_if(*judged.torrents, [&](const Torrent&) { return !judged.accepted[row++]; });
  return std::move(*judged.torrents);
}

FavoriteFetching::FavoriteFetching(Show show)
    : delivery_([this, show = std::move(show)](FilteredPage page) {
        if (page.failed()) {
          if (failed_.empty()) {
            trouble_ = page.trouble.value_or(PageTrouble{.kind = PageTrouble::Kind::NotReached});
          }
          failed_.push_back(page.number);
        }
        show(std::move(page));
      }) {}

void FavoriteFetching::fetch(const FavoriteListing& listing, const PageBatch& batch,
                             std::shared_ptr<void> owner) {
  std::vector<int> numbers(static_cast<std::size_t>(std::max(batch.count, 1)));
  std::iota(numbers.begin(), numbers.end(), batch.start);
  fetchPages(listing, numbers, std::move(owner));
}

void FavoriteFetching::fetchPages(const FavoriteListing& listing, const std::vector<int>& pages,
                                  std::shared_ptr<void> owner) {
  const auto order = std::make_shared<DeliveryOrder>(pages);
  if (outstanding() == 0) {
    failed_.clear();
  }
  const int batch = delivery_.begin(static_cast<int>(pages.size()));
  int before = kNoPage;
  for (const int page : pages) {
    operationQueueMultiple_.addOperation(std::make_shared<FilterFetchPage>(
        listing.pageUrl(page), listing.filters(),
        [this, owner, batch, page](FilteredPage filtered) {
          filtered.number = page;
          delivery_.deliver(batch, std::move(filtered));
        },
        DeliveryPlace{order, page, before}));
    before = page;
  }
}

}  // namespace veltramoor
