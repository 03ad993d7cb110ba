#include "ChildProgram.h"

#include <fcntl.h>
#include <poll.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cctype>
#include <csignal>
#include <cstdlib>
#include <deque>
#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <string_view>
#include <thread>

namespace veltramoor {
namespace {

using Clock = std::chrono::steady_clock;
using std::chrono::milliseconds;

constexpr milliseconds kLook{100};
constexpr std::size_t kLooksAlike = 11;

/// The value of a line of /proc/PID/status, without its blanks; "" when there is none.
std::string statusValue(const std::filesystem::path& process, std::string_view key) {
  std::ifstream status(process / "status");
  for (std::string line; std::getline(status, line);) {
    if (line.starts_with(key)) {
      return line.substr(std::min(line.find_first_not_of(" \t", key.size()), line.size()));
    }
  }
  return {};
}

}  // namespace

ChildProgram::ChildProgram(const std::vector<std::string>& arguments) {
  std::vector<std::string> texts = arguments;
  std::vector<char*> pointers;
  for (std::string& text : texts) {
    pointers.push_back(text.data());
  }
  pointers.push_back(nullptr);

  std::array<int, 2> ends{};
  if (::pipe2(ends.data(), O_CLOEXEC) != 0) {
    throw std::runtime_error("no pipe");
  }
  posix_spawn_file_actions_t actions;
  ::posix_spawn_file_actions_init(&actions);
  ::posix_spawn_file_actions_adddup2(&actions, ends[1], STDOUT_FILENO);
  start_ = Clock::now();
  const int failure =
      ::posix_spawnp(&pid_, pointers.front(), &actions, nullptr, pointers.data(), environ);
  ::posix_spawn_file_actions_destroy(&actions);
  ::close(ends[1]);
  output_ = ends[0];
  if (failure != 0) {
    ::close(output_);
    throw std::runtime_error("cannot start " + arguments.front());
  }
}

ChildProgram::~ChildProgram() {
  ::kill(pid_, SIGKILL);
  ::waitpid(pid_, nullptr, 0);
  ::close(output_);
}

std::string ChildProgram::readLine(milliseconds limit) {
  const Clock::time_point end = Clock::now() + limit;
  std::size_t length = 0;
  while ((length = unread_.find('\n')) == std::string::npos) {
    const auto left = std::chrono::duration_cast<milliseconds>(end - Clock::now());
    pollfd polled{output_, POLLIN, 0};
    std::array<char, 256> chunk{};
    if (left.count() <= 0 || ::poll(&polled, 1, static_cast<int>(left.count())) <= 0) {
      throw std::runtime_error("a program did not say a line in time");
    }
    const ssize_t got = ::read(output_, chunk.data(), chunk.size());
    if (got <= 0) {
      throw std::runtime_error("a program ended early");
    }
    unread_.append(chunk.data(), static_cast<std::size_t>(got));
  }
  std::string line = unread_.substr(0, length);
  unread_.erase(0, length + 1);
  return line;
}

double ChildProgram::millisecondsSinceStart() const {
  return std::chrono::duration<double, std::milli>(Clock::now() - start_).count();
}

long ChildProgram::settledResidentKib(milliseconds limit) const {
  std::deque<long> looks;
  for (const Clock::time_point end = Clock::now() + limit; Clock::now() < end;) {
    const std::string value = statusValue("/proc/" + std::to_string(pid_), "VmRSS:");
    looks.push_back(std::strtol(value.c_str(), nullptr, 10));
    if (looks.back() <= 0) {
      throw std::runtime_error("a program ended early");
    }
    if (looks.size() > kLooksAlike) {
      looks.pop_front();
    }
    const auto [least, most] = std::minmax_element(looks.begin(), looks.end());
    if (looks.size() == kLooksAlike && *most - *least < *most / 100) {
      return looks.back();
    }
    std::this_thread::sleep_for(kLook);
  }
  throw std::runtime_error("a program's memory did not settle");
}

std::size_t ChildProgram::children() const {
  std::size_t count = 0;
  for (const auto& entry : std::filesystem::directory_iterator("/proc")) {
    if (std::isdigit(static_cast<unsigned char>(entry.path().filename().string().front())) != 0 &&
        statusValue(entry.path(), "PPid:") == std::to_string(pid_)) {
      ++count;
    }
  }
  return count;
}

}  // namespace veltramoor
