#include "platform/OperationQueue.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <functional>
#include <future>
#include <stdexcept>
#include <thread>
#include <vector>

namespace veltramoor {
namespace {

using namespace std::chrono_literals;
constexpr auto kGenerous = 20s;

class Lambda final : public Operation {
 public:
  explicit Lambda(std::function<void()> body) : body_(std::move(body)) {}
  void main() override { body_(); }

 private:
  std::function<void()> body_;
};

std::shared_ptr<Operation> operation(std::function<void()> body) {
  return std::make_shared<Lambda>(std::move(body));
}

TEST(OperationQueue, RunsAtMostTheMaximumAtOnceAndReachesIt) {
  for (const std::size_t maximum : {1U, 3U, 10U}) {
    std::atomic<std::size_t> running = 0;
    std::atomic<std::size_t> most = 0;
    std::atomic<std::size_t> done = 0;
    OperationQueue queue(maximum);
    EXPECT_EQ(queue.maxConcurrentOperationCount(), maximum);
    for (int i = 0; i < 60; ++i) {
      queue.addOperation(operation([&, i] {
        const std::size_t now = ++running;
        std::size_t before = most;
        while (before < now && !most.compare_exchange_weak(before, now)) {
        }
        // The first ones stay until all places are taken.
        const auto end = std::chrono::steady_clock::now() + kGenerous;
        while (i < 10 && most < maximum && std::chrono::steady_clock::now() < end) {
          std::this_thread::sleep_for(1ms);
        }
        ++done;
        --running;
      }));
    }
    EXPECT_TRUE(queue.waitUntilAllOperationsAreFinished(kGenerous));
    EXPECT_EQ(queue.operationCount(), 0U);
    EXPECT_EQ(done, 60U);
    EXPECT_EQ(most, maximum);
  }
  EXPECT_THROW(OperationQueue(0), std::invalid_argument);
  EXPECT_THROW(OperationQueue(65), std::invalid_argument);
  EXPECT_THROW(OperationQueue(1).addOperation(nullptr), std::invalid_argument);
}

TEST(OperationQueue, ASerialQueueKeepsTheOrderAndCountsWhatItHolds) {
  std::vector<int> order;
  std::promise<void> begun;
  std::promise<void> gate;
  OperationQueue queue(1);
  queue.addOperation(operation([&] {
    begun.set_value();
    gate.get_future().wait();
  }));
  for (int i = 0; i < 100; ++i) {
    queue.addOperation(operation([&order, i] {
      order.push_back(i);
      if (i % 10 == 3) {
        throw std::runtime_error("the worker must live on");
      }
    }));
  }
  begun.get_future().wait();
  EXPECT_EQ(queue.operationCount(), 101U) << "the running one counts";
  EXPECT_FALSE(queue.waitUntilAllOperationsAreFinished(5ms));
  gate.set_value();
  EXPECT_TRUE(queue.waitUntilAllOperationsAreFinished(kGenerous));
  EXPECT_EQ(order.size(), 100U);
  EXPECT_TRUE(std::ranges::is_sorted(order));
}

TEST(OperationQueue, AnOperationIsReleasedOnItsWorkerAfterItLeft) {
  OperationQueue queue(2);
  std::promise<std::pair<std::thread::id, std::size_t>> released;
  struct Probe {
    std::function<void()> gone;
    ~Probe() { gone(); }
  };
  std::thread::id worker;
  auto probe = std::make_shared<Probe>();
  probe->gone = [&] { released.set_value({std::this_thread::get_id(), queue.operationCount()}); };
  queue.addOperation(
      operation([&worker, probe = std::move(probe)] { worker = std::this_thread::get_id(); }));
  const auto [thread, count] = released.get_future().get();
  EXPECT_EQ(thread, worker);
  EXPECT_EQ(count, 0U);
}

TEST(OperationQueue, DestroyingJoinsWhatRunsAndDropsTheRest) {
  std::atomic<bool> finished = false;
  std::atomic<int> later = 0;
  const auto held = std::make_shared<int>(1);
  {
    std::promise<void> begun;
    OperationQueue queue(1);
    queue.addOperation(operation([&] {
      begun.set_value();
      std::this_thread::sleep_for(30ms);
      finished = true;
    }));
    for (int i = 0; i < 20; ++i) {
      queue.addOperation(operation([&later, held] { ++later; }));
    }
    begun.get_future().wait();
  }
  EXPECT_TRUE(finished);
  EXPECT_EQ(later, 0);
  EXPECT_EQ(held.use_count(), 1) << "what was dropped is released";
}

// A screen owns its queue; when the last to hold the screen is an operation, the queue goes from
// within its own worker.
TEST(OperationQueue, MayBeDestroyedByItsOwnOperation) {
  for (int round = 0; round < 50; ++round) {
    struct Screen {
      OperationQueue queue{3};
      std::promise<void> gone;
      ~Screen() { gone.set_value(); }
    };
    auto screen = std::make_shared<Screen>();
    std::future<void> gone = screen->gone.get_future();
    for (int i = 0; i < 3; ++i) {
      screen->queue.addOperation(operation([screen] {}));
    }
    screen.reset();
    ASSERT_EQ(gone.wait_for(kGenerous), std::future_status::ready);
  }
}

}  // namespace
}  // namespace veltramoor
