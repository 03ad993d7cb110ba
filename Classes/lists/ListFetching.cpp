#include "lists/ListFetching.h"

#include <memory>
#include <utility>

#include "site/FetchPageAllTorrents.h"

namespace veltramoor {

void ListFetching::fetch(std::optional<Url> url, Completion completion) {
  ++underWay_;
  queue_.addOperation(std::make_shared<FetchPageAllTorrents>(
      std::move(url),
      [this, of = generation_, completion = std::move(completion)](
          std::optional<std::vector<Torrent>> page, std::optional<PageTrouble> trouble) {
        if (of == generation_) {
          --underWay_;
          completion(std::move(page), std::move(trouble));
        }
      }));
}

void ListFetching::ignoreUnderWay() {
  ++generation_;
  underWay_ = 0;
}

}  // namespace veltramoor
