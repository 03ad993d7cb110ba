#include "shell/overlay/SendingTorrentIndicator.h"

#include <mutex>

#include "toolkit/SharedInstances.h"

namespace veltramoor {

SendingTorrentIndicator& SendingTorrentIndicator::current() {
  return SharedInstances::of<SendingTorrentIndicator>();
}

SendingTorrentIndicator& SendingTorrentIndicator::sharedInstance() {
  static std::mutex mutex;
  const std::lock_guard lock(mutex);
  SendingTorrentIndicator& instance = current();
  instance.reset();
  return instance;
}

}  // namespace veltramoor
