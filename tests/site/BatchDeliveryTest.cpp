// Which page of a batch is the last one, whatever its workers do.
#include "site/BatchDelivery.h"

#include <gtest/gtest.h>

#include <numeric>
#include <optional>
#include <random>
#include <thread>
#include <vector>

#include "platform/RunLoop.h"
#include "site/FetchPage.h"

namespace veltramoor {
namespace {

using namespace std::chrono_literals;

TEST(BatchDeliveryTest, HoldsALaterBatchBackAndCountsEachPageBeforeItIsShown) {
  std::vector<std::pair<int, int>> shown;
  BatchDelivery<int>* all = nullptr;
  BatchDelivery<int> delivery([&](int page) { shown.emplace_back(page, all->outstanding()); });
  all = &delivery;
  const int first = delivery.begin(2);
  delivery.deliver(first, 0);
  const int second = delivery.begin(2);
  EXPECT_EQ(delivery.asked(), 4);
  delivery.deliver(second, 10);
  EXPECT_EQ(shown.size(), 1U) << "page 1 is still to come";
  delivery.deliver(first, 1);
  delivery.deliver(second, 11);
  EXPECT_EQ(shown, (std::vector<std::pair<int, int>>{{0, 1}, {1, 2}, {10, 1}, {11, 0}}));
  EXPECT_EQ(delivery.delivered(), 4) << "stays until the next batch begins";
  const int third = delivery.begin(1);
  EXPECT_EQ(delivery.asked(), 1);
  EXPECT_EQ(delivery.outstanding(), 1);
  delivery.deliver(third, 20);
  EXPECT_EQ(delivery.outstanding(), 0);
}

// Takes a random time, and arrives, fails, or throws.
class Page final : public FetchPage<std::optional<int>> {
 public:
  Page(int number, unsigned microseconds, unsigned fate, Completion completion, DeliveryPlace place)
      : FetchPage(std::nullopt, std::move(completion), std::move(place)),
        number_(number),
        microseconds_(microseconds),
        fate_(fate) {}

 private:
  void fetch() override {
    if (microseconds_ > 0) {
      std::this_thread::sleep_for(std::chrono::microseconds(microseconds_));
    }
    if (fate_ == 0) {
      throw std::runtime_error("lost");
    }
    if (fate_ > 1) {
      returnObject_ = number_;
    }
  }

  int number_;
  unsigned microseconds_;
  unsigned fate_;
};

/// A list as far as its overlay goes: up while a batch runs.
class List {
 public:
  void fetch(int pages, std::minstd_rand& random) {
    std::vector<int> numbers(static_cast<std::size_t>(pages));
    std::iota(numbers.begin(), numbers.end(), asked_);
    const auto order = std::make_shared<DeliveryOrder>(numbers);
    const int batch = delivery_.begin(pages);
    overlay_ = true;
    asked_ += pages;
    for (const int page : numbers) {
      // Many pages at once are the case in which deliveries and leaving the queue cross.
      const auto delay = static_cast<unsigned>(random() % 3 == 0 ? random() % 150 : 0);
      queue_.addOperation(std::make_shared<Page>(
          page, delay, static_cast<unsigned>(random() % 8),
          [this, batch](std::optional<int> result) { delivery_.deliver(batch, result); },
          DeliveryPlace{order, page, page == numbers.front() ? -1 : page - 1}));
    }
  }
  [[nodiscard]] bool overlay() const { return overlay_; }
  [[nodiscard]] bool takesTouches() const { return delivery_.outstanding() < 2; }
  [[nodiscard]] int asked() const { return asked_; }
  [[nodiscard]] int shown() const { return shown_; }
  [[nodiscard]] int hidden() const { return hidden_; }
  [[nodiscard]] int outOfTurn() const { return outOfTurn_; }

 private:
  void show(std::optional<int> page) {
    EXPECT_TRUE(overlay_);
    outOfTurn_ += page && *page != shown_ ? 1 : 0;
    ++shown_;
    if (delivery_.outstanding() == 0) {
      overlay_ = false;
      ++hidden_;
    }
  }

  BatchDelivery<std::optional<int>> delivery_{[this](std::optional<int> page) { show(page); }};
  bool overlay_ = false;
  int asked_ = 0;
  int shown_ = 0;
  int hidden_ = 0;
  int outOfTurn_ = 0;
  OperationQueue queue_{10};
};

// 10,000 batches of 1 to 8 pages on 10 threads, an eighth of the pages throwing and an eighth
// absent; every fifth batch begins, as a person can, while the last page of one is on its way.
// Going by the count of the queue instead fails within the first few batches.
TEST(BatchDeliveryTest, TheOverlayGoesWithTheLastPageOfTenThousandBatches) {
  RunLoop loop;
  std::minstd_rand random(11);
  List list;
  for (int batch = 0; batch < 10'000; ++batch) {
    list.fetch(static_cast<int>(1 + random() % 8), random);
    const bool early = batch % 5 == 0;
    ASSERT_TRUE(loop.runUntil([&] { return early ? list.takesTouches() : !list.overlay(); }, 20s))
        << "batch " << batch << ": " << list.shown() << " of " << list.asked();
    ASSERT_TRUE(early || list.shown() == list.asked());
  }
  ASSERT_TRUE(loop.runUntil([&] { return !list.overlay(); }, 20s));
  EXPECT_EQ(list.shown(), list.asked());
  EXPECT_EQ(list.outOfTurn(), 0);
  EXPECT_GE(list.hidden(), 8'000);
}

}  // namespace
}  // namespace veltramoor
