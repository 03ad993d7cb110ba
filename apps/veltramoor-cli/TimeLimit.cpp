#include "TimeLimit.h"

#include <unistd.h>

#include <cstdio>
#include <utility>

#include "Terminal.h"

namespace veltramoor::cli {

TimeLimit::TimeLimit(std::chrono::milliseconds limit, std::string words)
    : watch_([this, limit, words = std::move(words)] {
        std::unique_lock lock(mutex_);
        if (!changed_.wait_for(lock, limit, [this] { return done_; })) {
          fail(kRefused, words);
          std::fflush(stderr);
          _exit(kRefused);
        }
      }) {}

TimeLimit::~TimeLimit() {
  {
    const std::lock_guard lock(mutex_);
    done_ = true;
  }
  changed_.notify_one();
  watch_.join();
}

}  // namespace veltramoor::cli
