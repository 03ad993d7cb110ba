// Signing in and out in the terminal, each command a process of its own.
#include <nlohmann/json.hpp>

#include "ScreenTest.h"
#include "support/TemporaryFolder.h"
#include "support/TransmissionDaemon.h"

namespace veltramoor {
namespace {

class SessionCliTest : public testing::Test {
 protected:
  std::string run(std::vector<std::string> arguments, const std::string& input = {}) {
    arguments.insert(arguments.begin(), {"env", "XDG_DATA_HOME=" + state_.path().string(),
                                         std::string(VELTRAMOOR_BIN_DIR) + "/veltramoor-cli",
                                         "--site-host", site_.host()});
    return test::outputOf(arguments, &status_, input);
  }

  const test::TemporaryFolder state_;
  DemoSite site_;
  int status_ = -1;
};

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
}

}  // namespace
}  // namespace veltramoor
