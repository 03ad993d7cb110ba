#include "platform/RunLoop.h"

#include <algorithm>
#include <cassert>
#include <condition_variable>
#include <deque>
#include <mutex>
#include <optional>
#include <utility>

#include "platform/MainThread.h"

namespace veltramoor {

class RunLoop::Impl {
 public:
  void post(MainThread::Task task) {
    {
      const std::lock_guard lock(mutex_);
      if (closed_) {
        return;
      }
      tasks_.push_back(std::move(task));
    }
    arrived_.notify_one();
  }

  /// Runs the first task, as soon as there is one; without a deadline, however long that takes.
  bool runOne(std::optional<std::chrono::steady_clock::time_point> deadline) {
    MainThread::Task task;
    {
      std::unique_lock lock(mutex_);
      const auto isThere = [this] { return !tasks_.empty(); };
      if (!deadline) {
        arrived_.wait(lock, isThere);
      } else if (!arrived_.wait_until(lock, *deadline, isThere)) {
        return false;
      }
      task = std::move(tasks_.front());
      tasks_.pop_front();
    }
    task();
    return true;
  }

  std::size_t size() const {
    const std::lock_guard lock(mutex_);
    return tasks_.size();
  }

  void close() {
    std::deque<MainThread::Task> dropped;
    const std::lock_guard lock(mutex_);
    closed_ = true;
    dropped.swap(tasks_);
  }

 private:
  mutable std::mutex mutex_;
  std::condition_variable arrived_;
  std::deque<MainThread::Task> tasks_;
  bool closed_ = false;
};

RunLoop::RunLoop() : impl_(std::make_shared<Impl>()) {
  MainThread::attach([impl = impl_](MainThread::Task task) { impl->post(std::move(task)); });
}

RunLoop::~RunLoop() {
  MainThread::close();
  impl_->close();
}

void RunLoop::runUntil(const std::function<bool()>& done) {
  assert(MainThread::isCurrent());
  while (!done()) {
    impl_->runOne(std::nullopt);
  }
}

bool RunLoop::runUntil(const std::function<bool()>& done, std::chrono::milliseconds limit) {
  assert(MainThread::isCurrent());
  // What `done` looks at may change without a task, so it is asked now and then as well.
  constexpr std::chrono::milliseconds kPause{10};
  const auto deadline = std::chrono::steady_clock::now() + limit;
  while (!done()) {
    const auto now = std::chrono::steady_clock::now();
    if (now >= deadline) {
      return false;
    }
    impl_->runOne(std::min(deadline, now + kPause));
  }
  return true;
}

std::size_t RunLoop::runPending() {
  assert(MainThread::isCurrent());
  const std::size_t waiting = impl_->size();
  for (std::size_t i = 0; i < waiting; ++i) {
    impl_->runOne(std::chrono::steady_clock::now());
  }
  return waiting;
}

}  // namespace veltramoor
