// How long a thread was held at a time.
#pragma once

#include <chrono>
#include <ctime>

namespace veltramoor {

/// To be told of every turn of an event loop that turns at least each millisecond.
class LoopGap {
 public:
  void turn() {
    const Clock::time_point now = Clock::now();
    const double ran = threadMilliseconds();
    if (now - last_ > longest_) {
      longest_ = now - last_;
      ranInLongest_ = ran - lastRan_;
    }
    last_ = now;
    lastRan_ = ran;
  }
  /// Milliseconds between the two turns farthest apart, how long of that the thread itself ran (the
  /// rest it waited for a processor), and since the first turn.
  [[nodiscard]] double longest() const { return milliseconds(longest_); }
  [[nodiscard]] double ranInLongest() const { return ranInLongest_; }
  [[nodiscard]] double total() const { return milliseconds(last_ - start_); }

 private:
  using Clock = std::chrono::steady_clock;

  static double milliseconds(Clock::duration time) {
    return std::chrono::duration<double, std::milli>(time).count();
  }

  static double threadMilliseconds() {
    timespec time{};
    ::clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return static_cast<double>(time.tv_sec) * 1e3 + static_cast<double>(time.tv_nsec) / 1e6;
  }

  Clock::time_point start_ = Clock::now();
  Clock::time_point last_ = start_;
  double lastRan_ = threadMilliseconds();
  Clock::duration longest_{};
  double ranInLongest_ = 0;
};

}  // namespace veltramoor
