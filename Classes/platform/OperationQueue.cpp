#include "platform/OperationQueue.h"

#include <algorithm>
#include <condition_variable>
#include <deque>
#include <mutex>
#include <stdexcept>
#include <system_error>
#include <thread>
#include <utility>
#include <vector>

namespace veltramoor {
namespace {

/// What the workers share. Each worker keeps it alive, for a worker may outlive the queue (below).
struct Shared {
  std::mutex mutex;
  std::condition_variable workArrived;
  std::condition_variable becameEmpty;
  std::deque<std::shared_ptr<Operation>> waiting;
  std::size_t running = 0;
  std::size_t idleWorkers = 0;
  bool stopping = false;
};

void work(const std::shared_ptr<Shared>& shared) {
  std::unique_lock lock(shared->mutex);
  while (true) {
    ++shared->idleWorkers;
    shared->workArrived.wait(lock,
                             [&shared] { return shared->stopping || !shared->waiting.empty(); });
    --shared->idleWorkers;
    if (shared->stopping) {
      return;
    }
    std::shared_ptr<Operation> operation = std::move(shared->waiting.front());
    shared->waiting.pop_front();
    ++shared->running;
    lock.unlock();
    try {
      operation->main();
    } catch (...) {
      // Operations report no errors of their own; what one throws must not end the process.
    }
    lock.lock();
    --shared->running;
    if (shared->running == 0 && shared->waiting.empty()) {
      shared->becameEmpty.notify_all();
    }
    lock.unlock();
    operation.reset();
    lock.lock();
  }
}

}  // namespace

class OperationQueue::Impl {
 public:
  explicit Impl(std::size_t maximum) : maximum_(maximum) {}

  ~Impl() {
    std::deque<std::shared_ptr<Operation>> dropped;
    {
      const std::lock_guard lock(shared_->mutex);
      shared_->stopping = true;
      dropped.swap(shared_->waiting);
    }
    shared_->workArrived.notify_all();
    shared_->becameEmpty.notify_all();
    for (std::thread& worker : workers_) {
      // An operation that held its screen last destroys the screen, and so this queue, from here.
      if (worker.get_id() == std::this_thread::get_id()) {
        worker.detach();
      } else {
        worker.join();
      }
    }
  }
  Impl(const Impl&) = delete;
  Impl& operator=(const Impl&) = delete;

  void add(std::shared_ptr<Operation> operation) {
    {
      const std::lock_guard lock(shared_->mutex);
      shared_->waiting.push_back(std::move(operation));
      if (shared_->waiting.size() > shared_->idleWorkers && workers_.size() < maximum_) {
        startWorker();
      }
    }
    shared_->workArrived.notify_one();
  }

  [[nodiscard]] std::size_t count() const {
    const std::lock_guard lock(shared_->mutex);
    return shared_->waiting.size() + shared_->running;
  }

  [[nodiscard]] std::size_t maximum() const { return maximum_; }

  [[nodiscard]] bool waitUntilEmpty(std::chrono::milliseconds limit) const {
    std::unique_lock lock(shared_->mutex);
    return shared_->becameEmpty.wait_for(
        lock, limit, [this] { return shared_->waiting.empty() && shared_->running == 0; });
  }

 private:
  /// Without the threads it would like, the queue makes do with those it has.
  void startWorker() {
    try {
      workers_.emplace_back([shared = shared_] { work(shared); });
    } catch (const std::system_error&) {
      if (workers_.empty()) {
        shared_->waiting.pop_back();
        throw;
      }
    }
  }

  const std::size_t maximum_;
  const std::shared_ptr<Shared> shared_ = std::make_shared<Shared>();
  std::vector<std::thread> workers_;
};

OperationQueue::OperationQueue(std::size_t maximum) {
  if (maximum < 1 || maximum > 64) {
    throw std::invalid_argument("a queue runs 1 to 64 operations at once");
  }
  impl_ = std::make_unique<Impl>(maximum);
}

OperationQueue::~OperationQueue() = default;

void OperationQueue::addOperation(std::shared_ptr<Operation> operation) {
  if (!operation) {
    throw std::invalid_argument("no operation");
  }
  impl_->add(std::move(operation));
}

std::size_t OperationQueue::operationCount() const { return impl_->count(); }

std::size_t OperationQueue::maxConcurrentOperationCount() const { return impl_->maximum(); }

bool OperationQueue::waitUntilAllOperationsAreFinished(std::chrono::milliseconds limit) const {
  return impl_->waitUntilEmpty(limit);
}

}  // namespace veltramoor
