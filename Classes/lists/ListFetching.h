// A list's pages on their way.
#pragma once

#include <functional>
#include <optional>
#include <vector>

#include "platform/OperationQueue.h"
#include "platform/Url.h"
#include "site/PageTrouble.h"
#include "site/Torrent.h"

namespace veltramoor {

/// Queues the fetches of a list's pages and hands over those that somebody still waits for. Main
/// thread only.
class ListFetching {
 public:
  /// The page's rows, absent after a failed transfer; and of one without rows, why it has none.
  using Completion = std::function<void(std::optional<std::vector<Torrent>> page,
                                        std::optional<PageTrouble> trouble)>;

  explicit ListFetching(OperationQueue& queue) : queue_(queue) {}

  /// Queues the fetch of one page. `completion` must keep this alive.
  void fetch(std::optional<Url> url, Completion completion);
  /// Pages asked for and not handed over yet.
  [[nodiscard]] int underWay() const { return underWay_; }
  /// The pages under way are for nobody any more.
  void ignoreUnderWay();

 private:
  OperationQueue& queue_;
  int underWay_ = 0;
  // Pages that were asked for in an earlier one are ignored.
  int generation_ = 0;
};

}  // namespace veltramoor
