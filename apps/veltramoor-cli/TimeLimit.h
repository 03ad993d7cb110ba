// An end for work that cannot be interrupted.
#pragma once

#include <chrono>
#include <condition_variable>
#include <mutex>
#include <string>
#include <thread>

namespace veltramoor::cli {

/// Ends the program with a line on standard error, and as refused, unless it goes within `limit`.
/// For work on what came from the network, in a command that has nothing to lose by then.
class TimeLimit {
 public:
  TimeLimit(std::chrono::milliseconds limit, std::string words);
  ~TimeLimit();
  TimeLimit(const TimeLimit&) = delete;
  TimeLimit& operator=(const TimeLimit&) = delete;

 private:
  std::mutex mutex_;
  std::condition_variable changed_;
  bool done_ = false;
  std::thread watch_;
};

}  // namespace veltramoor::cli
