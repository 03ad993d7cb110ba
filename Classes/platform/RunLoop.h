// A main thread for tools and tests that have no screen.
#pragma once

#include <chrono>
#include <functional>
#include <memory>

namespace veltramoor {

/// Runs what `MainThread::perform` posts, on the thread that made it. Attaches on construction and
/// closes the main thread on destruction. One at a time in a process.
class RunLoop {
 public:
  RunLoop();
  ~RunLoop();
  RunLoop(const RunLoop&) = delete;
  RunLoop& operator=(const RunLoop&) = delete;

  /// Runs tasks until `done()` holds, which only a task may bring about.
  void runUntil(const std::function<bool()>& done);
  /// Runs tasks until `done()` holds (asked after each task, and now and then); false when `limit`
  /// passed first.
  bool runUntil(const std::function<bool()>& done, std::chrono::milliseconds limit);
  /// Runs what is waiting now and returns how many tasks that were.
  std::size_t runPending();

 private:
  class Impl;
  std::shared_ptr<Impl> impl_;
};

}  // namespace veltramoor
