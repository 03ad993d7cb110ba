// A forked copy of the test, for what only a second process can show.
#pragma once

#include <sys/types.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdio>
#include <exception>
#include <functional>
#include <stdexcept>

namespace veltramoor::test {

/// Runs `body` in a child and returns its process id; the child exits with 0 when `body` returns
/// true. Fork before starting threads.
inline pid_t startChild(const std::function<bool()>& body) {
  const pid_t child = fork();
  if (child < 0) {
    throw std::runtime_error("no child process");
  }
  if (child == 0) {
    bool good = false;
    try {
      good = body();
    } catch (const std::exception& error) {
      std::fprintf(stderr, "child: %s\n", error.what());
    }
    _exit(good ? 0 : 1);
  }
  return child;
}

/// Waits for a child's end; whether it exited with 0.
inline bool childSucceeded(pid_t child) {
  int status = 0;
  return waitpid(child, &status, 0) == child && WIFEXITED(status) && WEXITSTATUS(status) == 0;
}

/// A pipe: children that call `wait` go on together once the parent has called `open`.
class Gate {
 public:
  Gate() {
    if (pipe(ends_) != 0) {
      throw std::runtime_error("no pipe");
    }
  }
  ~Gate() {
    close(ends_[0]);
    open();
  }
  Gate(const Gate&) = delete;
  Gate& operator=(const Gate&) = delete;

  /// In the child.
  void wait() {
    open();
    char byte = 0;
    static_cast<void>(!read(ends_[0], &byte, 1));
  }
  /// In the parent.
  void open() {
    if (ends_[1] >= 0) {
      close(ends_[1]);
      ends_[1] = -1;
    }
  }

 private:
  int ends_[2] = {-1, -1};
};

}  // namespace veltramoor::test
