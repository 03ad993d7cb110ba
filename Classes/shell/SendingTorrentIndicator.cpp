#include "shell/SendingTorrentIndicator.h"

#include <mutex>

namespace veltramoor {

SendingTorrentIndicator& SendingTorrentIndicator::sharedInstance() {
  static std::mutex mutex;
  const std::lock_guard lock(mutex);
  static SendingTorrentIndicator instance;
  instance.reset();
  return instance;
}

}  // namespace veltramoor
