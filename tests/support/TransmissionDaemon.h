// A real transmission-daemon of the test's own.
#pragma once

#include <sys/types.h>

#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "support/TemporaryFolder.h"

namespace veltramoor::test {

/// Runs on free loopback ports with a folder of its own, from construction to destruction. Throws
/// std::runtime_error when it cannot be started.
class TransmissionDaemon {
 public:
  /// `login`: user name and password that its remote interface asks for; `allowed`: whom it
  /// answers.
  explicit TransmissionDaemon(
      std::optional<std::pair<std::string, std::string>> login = std::nullopt,
      const std::string& allowed = "127.0.0.1");
  ~TransmissionDaemon();
  TransmissionDaemon(const TransmissionDaemon&) = delete;
  TransmissionDaemon& operator=(const TransmissionDaemon&) = delete;

  [[nodiscard]] std::string port() const { return std::to_string(port_); }
  /// What transmission-remote lists: the daemon's own word on what it holds.
  [[nodiscard]] std::string listing() const;

 private:
  TemporaryFolder folder_;
  std::optional<std::pair<std::string, std::string>> login_;
  int port_ = 0;
  pid_t pid_ = -1;
};

/// A TCP port of 127.0.0.1 that nothing listens on at the moment.
[[nodiscard]] int freePort();

/// Runs a program to its end and returns what it wrote to standard output; `status` gets its exit
/// status. `input` is its standard input.
[[nodiscard]] std::string outputOf(const std::vector<std::string>& command, int* status = nullptr,
                                   const std::string& input = {});

}  // namespace veltramoor::test
