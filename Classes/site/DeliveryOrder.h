// Whose turn it is among pages fetched in parallel.
#pragma once

#include <condition_variable>
#include <mutex>
#include <vector>

namespace veltramoor {

/// The numbers of the pages of one batch that have not been delivered yet. Shared by the batch's
/// operations; every test and removal is one guarded step.
class DeliveryOrder {
 public:
  explicit DeliveryOrder(std::vector<int> numbers) : numbers_(std::move(numbers)) {}

  /// Blocks while `number` is among the undelivered. A number that never was does not block.
  void waitUntilDelivered(int number);
  /// Removes every `number` and wakes those that wait for it.
  void markDelivered(int number);

 private:
  std::mutex mutex_;
  std::condition_variable changed_;
  std::vector<int> numbers_;
};

}  // namespace veltramoor
