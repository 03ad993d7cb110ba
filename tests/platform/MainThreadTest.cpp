#include "platform/MainThread.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <future>
#include <optional>
#include <stdexcept>
#include <thread>
#include <vector>

#include "platform/Alerts.h"
#include "platform/RunLoop.h"

namespace veltramoor {
namespace {

using namespace std::chrono_literals;
constexpr auto kGenerous = 20s;

TEST(MainThread, RunsTasksLaterInOrderOnTheMainThread) {
  RunLoop loop;
  EXPECT_TRUE(MainThread::isCurrent());
  std::vector<int> order;
  MainThread::perform([&] {
    order.push_back(1);
    MainThread::perform([&] { order.push_back(3); });
    order.push_back(2);
  });
  EXPECT_TRUE(order.empty());
  EXPECT_EQ(loop.runPending(), 1U) << "what a task posts waits for the next turn";
  EXPECT_EQ(loop.runPending(), 1U);
  EXPECT_EQ(order, (std::vector<int>{1, 2, 3}));
  EXPECT_FALSE(loop.runUntil([] { return false; }, 5ms));
}

TEST(MainThread, EachThreadsTasksKeepTheirOrder) {
  RunLoop loop;
  constexpr int kTasks = 500;
  std::vector<std::vector<int>> seen(4);
  std::vector<std::thread> workers;
  int ran = 0;
  for (std::size_t w = 0; w < seen.size(); ++w) {
    workers.emplace_back([&, w] {
      for (int i = 0; i < kTasks; ++i) {
        MainThread::perform([&, w, i] {
          EXPECT_TRUE(MainThread::isCurrent());
          seen[w].push_back(i);
          ++ran;
        });
      }
      EXPECT_FALSE(MainThread::isCurrent());
    });
  }
  EXPECT_TRUE(loop.runUntil([&] { return ran == 4 * kTasks; }, kGenerous));
  for (std::thread& worker : workers) {
    worker.join();
  }
  for (const std::vector<int>& order : seen) {
    EXPECT_TRUE(std::ranges::is_sorted(order));
  }
}

TEST(MainThread, PerformAndWaitReturnsWhenTheTaskHasRun) {
  RunLoop loop;
  int value = 0;
  EXPECT_TRUE(MainThread::performAndWait([&] { value = 1; })) << "at once on the main thread";
  EXPECT_EQ(value, 1);
  std::atomic<bool> over = false;
  std::thread worker([&] {
    EXPECT_TRUE(MainThread::performAndWait([&] { value = 2; }));
    EXPECT_EQ(value, 2);
    EXPECT_THROW(MainThread::performAndWait([] { throw std::runtime_error("to the waiter"); }),
                 std::runtime_error);
    over = true;
  });
  EXPECT_TRUE(loop.runUntil([&] { return over.load(); }, kGenerous));
  worker.join();
}

TEST(MainThread, ClosingReleasesWaitersAndDropsTasks) {
  for (int round = 0; round < 100; ++round) {
    std::atomic<int> waiting = 0;
    std::atomic<int> refused = 0;
    std::atomic<int> ran = 0;
    std::vector<std::thread> workers;
    {
      RunLoop loop;
      for (int i = 0; i < 4; ++i) {
        workers.emplace_back([&] {
          ++waiting;
          refused += MainThread::performAndWait([&] { ++ran; }) ? 0 : 1;
          MainThread::perform([&] { ++ran; });
        });
      }
      EXPECT_TRUE(loop.runUntil([&] { return waiting >= round % 5; }, kGenerous));
    }
    for (std::thread& worker : workers) {
      worker.join();
    }
    // Every waiter either had its task run or was told that it never will.
    EXPECT_GE(ran + refused, 4);
    EXPECT_TRUE(MainThread::isCurrent());
  }
}

TEST(MainThread, ATaskThatItsQueueThrowsAwayReleasesItsWaiter) {
  std::vector<MainThread::Task> queue;
  std::promise<void> posted;
  MainThread::attach([&](MainThread::Task task) {
    queue.push_back(std::move(task));
    posted.set_value();
  });
  std::thread worker([] { EXPECT_FALSE(MainThread::performAndWait([] { FAIL(); })); });
  posted.get_future().wait();
  queue.clear();
  worker.join();
  // One that drops at once, while posting.
  MainThread::attach([](const MainThread::Task&) {});
  std::thread([] { EXPECT_FALSE(MainThread::performAndWait([] { FAIL(); })); }).join();
  MainThread::close();
  std::thread([] { EXPECT_FALSE(MainThread::performAndWait([] { FAIL(); })); }).join();
}

TEST(Alerts, GoToThePresenterWhenThereIsOne) {
  struct Recorder : AlertPresenter {
    void show(Alert alert) override { shown.push_back(std::move(alert)); }
    std::vector<Alert> shown;
  };
  RunLoop loop;
  Recorder recorder;
  Alerts::show({.title = "dropped", .message = "", .buttons = {"OK"}, .tag = 0, .clicked = {}});
  Alerts::setPresenter(&recorder);
  Alerts::show({.title = "Title", .message = "Text", .buttons = {"OK"}, .tag = 7, .clicked = {}});
  Alerts::setPresenter(nullptr);
  ASSERT_EQ(recorder.shown.size(), 1U);
  EXPECT_EQ(recorder.shown[0].title, "Title");
  EXPECT_EQ(recorder.shown[0].tag, 7);
}

}  // namespace
}  // namespace veltramoor
