// Background work, a few pieces at a time.
#pragma once

#include <chrono>
#include <cstddef>
#include <memory>

namespace veltramoor {

/// One piece of background work.
class Operation {
 public:
  Operation() = default;
  virtual ~Operation() = default;
  Operation(const Operation&) = delete;
  Operation& operator=(const Operation&) = delete;

  /// Runs once, on a worker thread. An exception that escapes is swallowed: the worker lives on.
  virtual void main() = 0;
};

/// Runs operations in the order added, at most `maximum` at once. Threads are started when first
/// needed and joined by the destructor. Nothing is cancelled: what has started runs to its end;
/// what has not started when the queue is destroyed is dropped. Thread-safe.
class OperationQueue {
 public:
  /// `maximum` from 1 to 64; throws std::invalid_argument otherwise.
  explicit OperationQueue(std::size_t maximum);
  ~OperationQueue();
  OperationQueue(const OperationQueue&) = delete;
  OperationQueue& operator=(const OperationQueue&) = delete;

  /// An operation leaves the queue, and is released by it, when its `main` has returned.
  void addOperation(std::shared_ptr<Operation> operation);
  /// Operations waiting or running.
  [[nodiscard]] std::size_t operationCount() const;
  [[nodiscard]] std::size_t maxConcurrentOperationCount() const;
  /// Waits until the queue is empty; false when it was not within `limit`.
  bool waitUntilAllOperationsAreFinished(std::chrono::milliseconds limit) const;

 private:
  class Impl;
  std::unique_ptr<Impl> impl_;
};

}  // namespace veltramoor
