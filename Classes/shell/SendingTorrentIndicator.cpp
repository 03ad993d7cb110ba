#include "shell/SendingTorrentIndicator.h"

#include <mutex>

#include "toolkit/SharedInstances.h"

namespace veltramoor {

SendingTorrentIndicator& SendingTorrentIndicator::sharedInstance() {
  static std::mutex mutex;
  const std::lock_guard lock(mutex);
  auto& instance = SharedInstances::of<SendingTorrentIndicator>();
  instance.reset();
  return instance;
}

}  // namespace veltramoor
