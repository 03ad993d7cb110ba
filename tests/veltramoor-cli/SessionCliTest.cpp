// Signing in and out in the terminal, each command a process of its own.
#include <pty.h>
#include <sys/wait.h>
#include <termios.h>

#include <csignal>

#include "support/RawServer.h"
#include "veltramoor-cli/CliFixture.h"

namespace veltramoor {
namespace {

class SessionCliTest : public test::CliFixture {};

TEST_F(SessionCliTest, ASessionLastsFromLoginToLogout) {
  EXPECT_EQ(run({"whoami"}), "Nobody is signed in.\n");
  EXPECT_EQ(errors({"login", "anna"}, "wrong\n"), "veltramoor-cli: Bad username or password.\n");
  EXPECT_EQ(status_, 1);
  const std::string greeted = run({"login", "anna"}, "p&=%+é word\nignored\n");
  EXPECT_EQ(status_, 0);
  EXPECT_EQ(greeted, "anna\nStatus: Trusted Member\n");
  EXPECT_EQ(run({"whoami"}), greeted);
  EXPECT_EQ(json({"whoami"}), (nlohmann::json{{"username", "anna"}, {"ratio", "Trusted Member"}}));
  run({"logout"});
  EXPECT_EQ(status_, 0);
  EXPECT_EQ(run({"whoami"}), "Nobody is signed in.\n");
  for (const auto& [fault, reason] :
       {std::pair(FaultKind::Close, "127.0.0.1 broke the connection off."),
        std::pair(FaultKind::Error500, "The site answered with an error (500).")}) {
    site_.setFault("/", Fault{fault, {}, 0});
    for (const char* command : {"whoami", "login"}) {
      std::vector<std::string> arguments{command};
      arguments.resize(arguments.front() == "login" ? 2 : 1, "anna");
      EXPECT_EQ(errors(arguments, "p\n"), "veltramoor-cli: " + std::string(reason) + "\n");
      EXPECT_EQ(status_, 1);
    }
  }
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

TEST_F(SessionCliTest, APageThatNamesNobodyIsNoLogin) {
  const test::RawServer server([](const test::RecordedRequest&) {
    return test::RawServer::response(200, "<title>Hotel network</title>Welcome");
  });
  siteHost_ = server.hostAndPort();
  for (const auto& command : std::vector<std::vector<std::string>>{{"login", "anna"}, {"whoami"}}) {
    const std::string text = errors(command, "p\n");
    EXPECT_EQ(status_, 1);
    EXPECT_NE(text.find("names nobody"), std::string::npos) << text;
    EXPECT_NE(text.find("\"Hotel network\""), std::string::npos) << text;
  }
}

TEST_F(SessionCliTest, ASessionThatTheDiskRefusesIsNoSuccess) {
  run({"login", "demo"}, "demo\n");
  ASSERT_EQ(status_, 0);
  refuseChanges("DELETE ON cookies");
  EXPECT_EQ(errors({"logout"}),
            "veltramoor-cli: The session was not ended. The settings file did not take the "
            "change.\n");
  EXPECT_EQ(status_, 1);
  site_.expireSessions();
  run({"login", "demo"}, "demo\n");
  EXPECT_EQ(status_, 1);
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
