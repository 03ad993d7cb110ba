// How soon the terminal program answers: `veltramoor-cli history` with a full history, against
// `curl --version`, which loads the same HTTP library and does nothing with it.
#include <fcntl.h>
#include <fmt/format.h>
#include <spawn.h>
#include <sys/wait.h>

#include <stdexcept>
#include <string>
#include <vector>

#include "Ratio.h"
#include "platform/StateFile.h"
#include "remote/DownloadHistory.h"
#include "support/Places.h"
#include "support/TemporaryFolder.h"

namespace veltramoor {
namespace {

constexpr double kStartLimit = 2.0;
constexpr int kEntries = 50;

/// Runs a program to its end, its output dropped. Throws when it fails.
void run(std::vector<std::string> arguments) {
  std::vector<char*> pointers;
  for (std::string& argument : arguments) {
    pointers.push_back(argument.data());
  }
  pointers.push_back(nullptr);
  posix_spawn_file_actions_t actions{};
  posix_spawn_file_actions_init(&actions);
  posix_spawn_file_actions_addopen(&actions, 1, "/dev/null", O_WRONLY, 0);
  pid_t child = -1;
  const int error = posix_spawnp(&child, pointers[0], &actions, nullptr, pointers.data(), environ);
  posix_spawn_file_actions_destroy(&actions);
  int status = -1;
  if (error != 0 || waitpid(child, &status, 0) != child || !WIFEXITED(status) ||
      WEXITSTATUS(status) != 0) {
    throw std::runtime_error(arguments[0] + " could not be run");
  }
}

int measure() {
  const test::TemporaryFolder home;
  ::setenv("XDG_DATA_HOME", home.path().c_str(), 1);
  ::setenv("XDG_CONFIG_HOME", home.path().c_str(), 1);
  for (int entry = 0; entry < kEntries; ++entry) {
    DownloadHistory::append(fmt::format("A torrent that was sent, number {}", entry));
  }
  Ratios ratios;
  ratios.compare(
      "start of the terminal program", kStartLimit,
      [] {
        run({test::program("veltramoor-cli"), "history"});
      },
      [] {
        run({"curl", "--version"});
      });
  return ratios.exitCode();
}

}  // namespace
}  // namespace veltramoor

int main() {
  try {
    return veltramoor::measure();
  } catch (const std::exception& error) {
    fmt::print(stderr, "bench_start: {}\n", error.what());
    return 2;
  }
}
