#include "PasswordPrompt.h"

#include <fmt/format.h>
#include <termios.h>
#include <unistd.h>

#include <array>
#include <csignal>
#include <iostream>

namespace veltramoor::cli {
namespace {

// For the signal handler, which can be given nothing else.
termios echoing{};

// Ends the program as the signal would have, on a terminal that shows again what is typed.
void endEchoing(int signal) {
  ::tcsetattr(STDIN_FILENO, TCSANOW, &echoing);
  std::signal(signal, SIG_DFL);
  std::raise(signal);
}

// Keeps what is typed at a terminal off the screen.
class Unseen {
 public:
  Unseen() : isTerminal_(::isatty(STDIN_FILENO) == 1 && ::tcgetattr(STDIN_FILENO, &echoing) == 0) {
    if (!isTerminal_) {
      return;
    }
    for (const int signal : kEnding) {
      std::signal(signal, endEchoing);
    }
    termios quiet = echoing;
    quiet.c_lflag &= ~static_cast<tcflag_t>(ECHO);
    quiet.c_cc[VSUSP] = _POSIX_VDISABLE;  // A stopped program would leave the terminal mute.
    ::tcsetattr(STDIN_FILENO, TCSAFLUSH, &quiet);
    fmt::print(stderr, "Password: ");
  }
  ~Unseen() {
    if (isTerminal_) {
      ::tcsetattr(STDIN_FILENO, TCSAFLUSH, &echoing);
      for (const int signal : kEnding) {
        std::signal(signal, SIG_DFL);
      }
      fmt::print(stderr, "\n");
    }
  }
  Unseen(const Unseen&) = delete;
  Unseen& operator=(const Unseen&) = delete;

 private:
  static constexpr std::array kEnding{SIGINT, SIGTERM, SIGHUP, SIGQUIT};
  bool isTerminal_;
};

}  // namespace

std::optional<std::string> readPassword() {
  const Unseen unseen;
  std::string password;
  return std::getline(std::cin, password) ? std::optional(password) : std::nullopt;
}

}  // namespace veltramoor::cli
