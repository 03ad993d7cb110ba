// Sends from the terminal: of which listing a row is, and what is said meanwhile.
#include <chrono>
#include <thread>

#include "ListOutput.h"
#include "PreferencesKeys.h"
#include "Terminal.h"
#include "platform/Preferences.h"
#include "support/RawServer.h"
#include "support/RemotePeers.h"
#include "veltramoor-cli/CliFixture.h"

namespace veltramoor {
namespace {

class SendCommandsTest : public test::CliFixture {
 protected:
  void configure(const std::string& port) {
    run({"remote", "set", "--client", "Vuze", "--address", "127.0.0.1", "--port", port});
    ASSERT_EQ(status_, 0);
  }
  static std::string nameIn(const nlohmann::json& row) { return row["name"].get<std::string>(); }
};

TEST_F(SendCommandsTest, SendsARowOfWhatWasListedLast) {
  const test::VuzePeer peer;
  configure(peer.port());
  EXPECT_NE(errors({"send", "1"}).find("List first"), std::string::npos);
  EXPECT_EQ(status_, 2);

  const nlohmann::json found = json({"search", "the"});
  EXPECT_EQ(run({"send", "3"}), "Sent " + nameIn(found[2]) + " (row 3 of search \"the\")\n");
  run({"recent", "--page", "2", "--category", "201"});
  const nlohmann::json listed = json({"recent", "--page", "2", "--category", "201"});
  EXPECT_EQ(run({"send", "4"}),
            "Sent " + nameIn(listed[3]) + " (row 4 of recent, category 201, from page 2)\n");
  const nlohmann::json second = json({"recent", "--page", "1"});
  run({"top"});
  EXPECT_EQ(run({"send", "2", "--page", "1"}),
            "Sent " + nameIn(second[1]) + " (row 2 of recent, page 1)\n");

  // What failed lists nothing, and what lists nothing has no rows.
  const nlohmann::json top = json({"top"});
  site_.setFault("/recent", Fault{FaultKind::Error500, {}, 0});
  run({"recent"});
  ASSERT_EQ(status_, 1);
  EXPECT_EQ(json({"send", "100"}), (nlohmann::json{{"sent", top[99]["name"]}}));
  EXPECT_EQ(peer.added(),
            (std::vector<std::string>{found[2]["downloadUrl"], listed[3]["downloadUrl"],
                                      second[1]["downloadUrl"], top[99]["downloadUrl"]}));
  EXPECT_EQ(errors({"send", "101"}),
            "veltramoor-cli: The last listing (top) has no row 101; its rows are 1 to 100.\n");
  EXPECT_EQ(status_, 2);
  site_.clearFaults();
  run({"search", "zzzz"});
  EXPECT_EQ(errors({"send", "1"}),
            "veltramoor-cli: The last listing (search \"zzzz\") has no rows.\n");
  EXPECT_EQ(status_, 2);
  for (const auto& list : std::vector<std::vector<std::string>>{{"uploads"}, {"favourites"}}) {
    run(list);
    EXPECT_NE(errors({"send", "9"}).find("(" + list.front() + ")"), std::string::npos);
  }
}

TEST_F(SendCommandsTest, RemembersNoMoreRowsThanItSays) {
  const std::size_t pages = cli::kRememberedRows / 30 + 2;
  EXPECT_GT(json({"recent", "--pages", std::to_string(pages)}).size(), cli::kRememberedRows);
  const auto stored = Preferences(stateFile_).array(PreferencesKeys::terminalListing);
  ASSERT_TRUE(stored);
  EXPECT_EQ(stored->size(), 1 + 2 * cli::kRememberedRows);
  EXPECT_NE(errors({"send", std::to_string(cli::kRememberedRows + 1)}).find("no more are"),
            std::string::npos);
}

TEST_F(SendCommandsTest, SaysOnceWhatItWaitsFor) {
  const test::RawServer slow([](const test::RecordedRequest&) {
    std::this_thread::sleep_for(cli::Terminal::kPatience + std::chrono::seconds(1));
    return test::RawServer::response(200);
  });
  configure(std::to_string(slow.port()));
  run({"remote", "set", "--user", "me", "--password-stdin"}, "s3cret\n");
  EXPECT_EQ(errors({"send", "magnet:?xt=a"}),
            "veltramoor-cli: Waiting for " + slow.hostAndPort() + " ...\n");
  EXPECT_EQ(status_, 0);
  const test::VuzePeer quick;
  configure(quick.port());
  EXPECT_EQ(errors({"send", "magnet:?xt=a"}), "");
}

TEST_F(SendCommandsTest, ASendThatIsNotRememberedIsSaidAndNoSuccess) {
  const test::VuzePeer peer;
  configure(peer.port());
  refuseChanges("INSERT ON preference_elements");
  EXPECT_EQ(run({"send", "magnet:?dn=A"}), "Sent A\n");
  EXPECT_EQ(status_, 1);
  const std::string text = errors({"send", "magnet:?dn=A"});
  EXPECT_NE(text.find("Sent, but not remembered."), std::string::npos) << text;
  EXPECT_EQ(peer.added().size(), 2U);
  EXPECT_NE(errors({"recent"}).find("not remembered for send. "), std::string::npos);
  EXPECT_EQ(status_, 1) << "send would mean the rows before these";
  run({"filters", "add", "x"});
  EXPECT_EQ(status_, 1);
}

}  // namespace
}  // namespace veltramoor
