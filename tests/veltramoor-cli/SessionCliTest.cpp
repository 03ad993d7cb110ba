// Signing in and out in the terminal, each command a process of its own.
#include <pty.h>
#include <sys/wait.h>
#include <termios.h>

#include <csignal>

#include "veltramoor-cli/CliFixture.h"

namespace veltramoor {
namespace {

class SessionCliTest : public test::CliFixture {};

TEST_F(SessionCliTest, ASessionLastsFromLoginToLogout) {
  EXPECT_EQ(run({"whoami"}), "Anonymous (N/A)\n");
  EXPECT_EQ(run({"login", "anna"}, "wrong\n"), "");
  EXPECT_EQ(status_, 1);
  const std::string greeted = run({"login", "anna"}, "p&=%+é word\nignored\n");
  EXPECT_EQ(status_, 0);
  EXPECT_EQ(greeted.rfind("anna (", 0), 0U) << greeted;
  EXPECT_EQ(run({"whoami"}), greeted);
  EXPECT_EQ(nlohmann::json::parse(run({"whoami", "--json"}))["username"], "anna");
  run({"logout"});
  EXPECT_EQ(status_, 0);
  EXPECT_EQ(run({"whoami"}), "Anonymous (N/A)\n");
  site_.setFault("/", Fault{FaultKind::Close, {}, 0});
  EXPECT_EQ(run({"whoami"}), "");
  EXPECT_EQ(status_, 1);
  run({"login", "anna", "--password", "on the command line"});
  EXPECT_EQ(status_, 2);
  // Input that ends before a line is no empty password.
  run({"login", "anna"}, "");
  EXPECT_EQ(status_, 2);
  run({"remote", "set", "--client", "Vuze", "--address", "a", "--user", "b", "--password-stdin"},
      "kept\n");
  run({"remote", "set", "--password-stdin"}, "");
  EXPECT_EQ(status_, 2);
  EXPECT_NE(run({"remote", "show"}).find("with a password"), std::string::npos);
}

// What the shell gets back when the question for the password was broken off.
TEST_F(SessionCliTest, ABrokenOffLoginLeavesATerminalThatEchoes) {
#ifdef __SANITIZE_THREAD__
  GTEST_SKIP() << "ThreadSanitizer hands a signal over after the read that it broke off";
#endif
  int terminal = -1;
  const pid_t child = forkpty(&terminal, nullptr, nullptr, nullptr);
  ASSERT_GE(child, 0);
  if (child == 0) {
    const std::string program = kCli;
    setenv("XDG_DATA_HOME", dataHome_.c_str(), 1);
    execl(program.c_str(), program.c_str(), "--site-host", site_.host().c_str(), "login", "anna",
          nullptr);
    _exit(127);
  }
  const auto echoes = [&] {
    termios state{};
    EXPECT_EQ(tcgetattr(terminal, &state), 0);
    return (state.c_lflag & ECHO) != 0;
  };
  std::string shown;
  while (shown.find("Password: ") == std::string::npos) {
    char text[100];
    const ssize_t count = read(terminal, text, sizeof text);
    ASSERT_GT(count, 0) << shown;
    shown.append(text, static_cast<std::size_t>(count));
  }
  EXPECT_FALSE(echoes());
  ASSERT_EQ(write(terminal, "sec\x1aret\x03", 8), 8);
  int status = 0;
  ASSERT_EQ(waitpid(child, &status, 0), child);
  EXPECT_TRUE(WIFSIGNALED(status) && WTERMSIG(status) == SIGINT);
  EXPECT_TRUE(echoes());
  close(terminal);
}

}  // namespace
}  // namespace veltramoor
