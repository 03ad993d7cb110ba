// The pages of parallel fetches as they come to their screen.
#pragma once

#include <deque>
#include <functional>
#include <utility>

namespace veltramoor {

/// Counts the pages of batches on the main thread. Whether a batch has ended is told by this count
/// and never by what is left in a queue: a page's callback may run before or after its predecessor
/// has left the queue, and an overlay that went by that would now and then stay up for good.
///
/// A batch may begin while another is under way: its pages are held back until those of the earlier
/// one have been shown. Main thread only.
template <typename Page>
class BatchDelivery {
 public:
  using Show = std::function<void(Page)>;

  explicit BatchDelivery(Show show) : show_(std::move(show)) {}

  /// Begins a batch of `pages`, at least 1; the number to deliver them by.
  int begin(int pages) {
    if (batches_.empty()) {
      asked_ = 0;
      delivered_ = 0;
    }
    asked_ += pages;
    batches_.push_back({.pages = pages, .early = {}});
    return first_ + static_cast<int>(batches_.size()) - 1;
  }

  /// A page of that batch has come, in its turn. Shows it, and what was held back for it; each is
  /// counted before it is shown.
  void deliver(int batch, Page page) {
    batches_[static_cast<std::size_t>(batch - first_)].early.push_back(std::move(page));
    while (!batches_.empty() && !batches_.front().early.empty()) {
      Batch& current = batches_.front();
      Page next = std::move(current.early.front());
      current.early.pop_front();
      ++delivered_;
      if (--current.pages == 0) {
        batches_.pop_front();
        ++first_;
      }
      show_(std::move(next));
    }
  }

  /// Of the batches under way together; when none is, of the last ones.
  [[nodiscard]] int asked() const { return asked_; }
  [[nodiscard]] int delivered() const { return delivered_; }
  /// Pages asked for and not shown yet.
  [[nodiscard]] int outstanding() const { return asked_ - delivered_; }

 private:
  struct Batch {
    int pages = 0;
    std::deque<Page> early;
  };

  Show show_;
  std::deque<Batch> batches_;
  int first_ = 0;
  int asked_ = 0;
  int delivered_ = 0;
};

}  // namespace veltramoor
