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
        failed_ += page.torrents ? 0 : 1;
        show(std::move(page));
      }) {}

void FavoriteFetching::fetch(const FavoriteListing& listing, const PageBatch& batch,
                             std::shared_ptr<void> owner) {
  std::vector<int> numbers(static_cast<std::size_t>(std::max(batch.count, 1)));
  std::iota(numbers.begin(), numbers.end(), batch.start);
  const auto order = std::make_shared<DeliveryOrder>(numbers);
  if (outstanding() == 0) {
    failed_ = 0;
  }
  const int number = delivery_.begin(static_cast<int>(numbers.size()));
  for (const int page : numbers) {
    operationQueueMultiple_.addOperation(std::make_shared<FilterFetchPage>(
        listing.pageUrl(page), listing.filters(),
        [this, owner, number](FilteredPage filtered) {
          delivery_.deliver(number, std::move(filtered));
        },
        DeliveryPlace{order, page, page == batch.start ? kNoPage : page - 1}));
  }
}

}  // namespace veltramoor
