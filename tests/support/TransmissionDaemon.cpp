#include "support/TransmissionDaemon.h"

#include <arpa/inet.h>
#include <fcntl.h>
#include <netinet/in.h>
#include <signal.h>
#include <spawn.h>
#include <sys/prctl.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <fstream>
#include <nlohmann/json.hpp>
#include <stdexcept>
#include <thread>

namespace veltramoor::test {
namespace {

sockaddr_in loopback(int port) {
  sockaddr_in address{};
  address.sin_family = AF_INET;
  address.sin_port = htons(static_cast<std::uint16_t>(port));
  address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  return address;
}

bool answers(int port) {
  const int descriptor = socket(AF_INET, SOCK_STREAM, 0);
  const sockaddr_in address = loopback(port);
  const bool connected =
      connect(descriptor, reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0;
  close(descriptor);
  return connected;
}

pid_t start(const std::vector<std::string>& command, const posix_spawn_file_actions_t* actions) {
  std::vector<char*> arguments;
  for (const std::string& argument : command) {
    arguments.push_back(const_cast<char*>(argument.c_str()));
  }
  arguments.push_back(nullptr);
  pid_t pid = -1;
  if (posix_spawnp(&pid, arguments[0], actions, nullptr, arguments.data(), environ) != 0) {
    throw std::runtime_error("cannot start " + command[0]);
  }
  return pid;
}

// Not with posix_spawn: a daemon must go with its test, also when that crashes, and must not hold
// the test's standard output open.
pid_t startDaemon(const std::string& folder) {
  const std::string log = folder + "/log";
  const pid_t pid = fork();
  if (pid == 0) {
    prctl(PR_SET_PDEATHSIG, SIGKILL);
    const int descriptor = open(log.c_str(), O_WRONLY | O_CREAT, 0600);
    dup2(descriptor, STDOUT_FILENO);
    dup2(descriptor, STDERR_FILENO);
    execlp("transmission-daemon", "transmission-daemon", "-f", "-g", folder.c_str(), nullptr);
    _exit(127);
  }
  if (pid < 0) {
    throw std::runtime_error("cannot start transmission-daemon");
  }
  return pid;
}

}  // namespace

int freePort() {
  const int descriptor = socket(AF_INET, SOCK_STREAM, 0);
  sockaddr_in address = loopback(0);
  socklen_t length = sizeof address;
  if (bind(descriptor, reinterpret_cast<sockaddr*>(&address), length) != 0 ||
      getsockname(descriptor, reinterpret_cast<sockaddr*>(&address), &length) != 0) {
    throw std::runtime_error("no free port");
  }
  close(descriptor);
  return ntohs(address.sin_port);
}

std::string outputOf(const std::vector<std::string>& command, int* status,
                     const std::string& input) {
  int out[2];
  int in[2];
  if (pipe2(out, O_CLOEXEC) != 0 || pipe2(in, O_CLOEXEC) != 0) {
    throw std::runtime_error("no pipe");
  }
  posix_spawn_file_actions_t actions;
  posix_spawn_file_actions_init(&actions);
  posix_spawn_file_actions_adddup2(&actions, in[0], STDIN_FILENO);
  posix_spawn_file_actions_adddup2(&actions, out[1], STDOUT_FILENO);
  const pid_t pid = start(command, &actions);
  posix_spawn_file_actions_destroy(&actions);
  close(in[0]);
  close(out[1]);
  if (write(in[1], input.data(), input.size()) != static_cast<ssize_t>(input.size())) {
    throw std::runtime_error("input not taken");
  }
  close(in[1]);
  std::string output;
  char buffer[4096];
  for (ssize_t got = 0; (got = read(out[0], buffer, sizeof buffer)) > 0;) {
    output.append(buffer, static_cast<std::size_t>(got));
  }
  close(out[0]);
  int ended = 0;
  waitpid(pid, &ended, 0);
  if (status != nullptr) {
    *status = WIFEXITED(ended) ? WEXITSTATUS(ended) : -1;
  }
  return output;
}

TransmissionDaemon::TransmissionDaemon(std::optional<std::pair<std::string, std::string>> login,
                                       const std::string& allowed)
    : login_(std::move(login)), port_(freePort()) {
  nlohmann::json settings = {{"rpc-enabled", true},
                             {"rpc-bind-address", "127.0.0.1"},
                             {"rpc-port", port_},
                             {"rpc-whitelist-enabled", true},
                             {"rpc-whitelist", allowed},
                             {"anti-brute-force-enabled", true},
                             {"anti-brute-force-threshold", 100},
                             {"rpc-authentication-required", login_.has_value()},
                             {"peer-port", freePort()},
                             {"bind-address-ipv4", "127.0.0.1"},
                             {"bind-address-ipv6", "::1"},
                             {"dht-enabled", false},
                             {"pex-enabled", false},
                             {"lpd-enabled", false},
                             {"utp-enabled", false},
                             {"port-forwarding-enabled", false},
                             {"download-dir", (folder_ / "downloads").string()}};
  if (login_) {
    settings["rpc-username"] = login_->first;
    settings["rpc-password"] = login_->second;
  }
  std::ofstream(folder_ / "settings.json") << settings;
  pid_ = startDaemon(folder_.path().string());
  for (int tries = 0; !answers(port_); ++tries) {
    if (tries == 500) {
      throw std::runtime_error("transmission-daemon does not answer");
    }
    std::this_thread::sleep_for(std::chrono::milliseconds(20));
  }
}

TransmissionDaemon::~TransmissionDaemon() {
  kill(pid_, SIGTERM);
  int status = 0;
  for (int tries = 0; waitpid(pid_, &status, WNOHANG) == 0; ++tries) {
    std::this_thread::sleep_for(std::chrono::milliseconds(20));
    if (tries == 250) {
      kill(pid_, SIGKILL);
    }
  }
}

std::string TransmissionDaemon::listing() const {
  std::vector<std::string> command = {"transmission-remote", "127.0.0.1:" + port()};
  if (login_) {
    command.insert(command.end(), {"-n", login_->first + ":" + login_->second});
  }
  command.emplace_back("-l");
  return outputOf(command);
}

}  // namespace veltramoor::test
