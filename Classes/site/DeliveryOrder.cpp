#include "site/DeliveryOrder.h"

#include <algorithm>
#include <chrono>

namespace veltramoor {

void DeliveryOrder::waitUntilDelivered(int number) {
  std::unique_lock lock(mutex_);
  // The bound only guards against a lost wake-up; a page waits for its turn, not for the clock.
  while (std::find(numbers_.begin(), numbers_.end(), number) != numbers_.end()) {
    changed_.wait_for(lock, std::chrono::milliseconds(200));
  }
}

void DeliveryOrder::markDelivered(int number) {
  {
    const std::lock_guard lock(mutex_);
    std::erase(numbers_, number);
  }
  changed_.notify_all();
}

}  // namespace veltramoor
