// Another program under measurement.
#pragma once

#include <sys/types.h>

#include <chrono>
#include <cstddef>
#include <string>
#include <vector>

namespace veltramoor {

/// A program started with this one's environment, killed and reaped by the destructor.
class ChildProgram {
 public:
  /// `arguments[0]` is looked for in PATH. Throws std::runtime_error when it cannot be started.
  explicit ChildProgram(const std::vector<std::string>& arguments);
  ~ChildProgram();
  ChildProgram(const ChildProgram&) = delete;
  ChildProgram& operator=(const ChildProgram&) = delete;

  /// The next line of its standard output. Throws std::runtime_error when none came within
  /// `limit` or the output ended.
  std::string readLine(std::chrono::milliseconds limit);
  /// Milliseconds since just before it was started.
  [[nodiscard]] double millisecondsSinceStart() const;
  /// Resident memory in KiB (VmRSS), once it has changed by less than 1 % within a second. Throws
  /// std::runtime_error when the program has ended or `limit` has passed.
  [[nodiscard]] long settledResidentKib(std::chrono::milliseconds limit) const;
  /// Processes that have this one as parent.
  [[nodiscard]] std::size_t children() const;

 private:
  pid_t pid_ = -1;
  int output_ = -1;
  std::string unread_;
  std::chrono::steady_clock::time_point start_;
};

}  // namespace veltramoor
