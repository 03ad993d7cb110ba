// The terminal program, run as a person would.
#include <filesystem>
#include <fstream>

#include "PreferencesKeys.h"
#include "platform/Preferences.h"
#include "remote/RemoteDiagnosis.h"
#include "veltramoor-cli/CliFixture.h"

namespace veltramoor {
namespace {

class CliTest : public test::CliFixture {};

TEST_F(CliTest, ListsSendsAndRemembers) {
  const test::TransmissionDaemon daemon(std::pair("me", "s e:cret"));
  run({"remote", "set", "--client", "Transmission", "--address", "127.0.0.1", "--port",
       daemon.port(), "--user", "me", "--password-stdin"},
      "s e:cret\nignored\n");
  EXPECT_EQ(status_, 0);
  const std::string shown = run({"remote", "show"});
  EXPECT_EQ(shown, "Transmission at 127.0.0.1:" + daemon.port() + "\nuser me, with a password\n");
  EXPECT_EQ(json({"remote", "show"}).dump().find("s e:cret"), std::string::npos);

  const nlohmann::json rows = json({"recent"});
  ASSERT_EQ(rows.size(), 30U);
  for (const char* key : {"name", "detailsUrl", "downloadUrl", "type", "date", "size", "up", "down",
                          "isDownloaded"}) {
    EXPECT_TRUE(rows[0].contains(key)) << key;
  }
  EXPECT_EQ(run({"send", "2"}),
            "Sent " + rows[1]["name"].get<std::string>() + " (row 2 of recent)\n");
  EXPECT_EQ(status_, 0);
  run({"send", "magnet:?xt=urn:btih:89abcdef0123456789abcdef0123456789abcdef&dn=An+open%20book"});
  EXPECT_EQ(status_, 0);
  EXPECT_EQ(json({"history"}), (nlohmann::json{"An open book", rows[1]["name"]}));
  EXPECT_TRUE(json({"recent"})[1]["isDownloaded"]);
  const nlohmann::json details = json({"details", "1"});
  EXPECT_NE(details["text"].get<std::string>().find("Seeders:"), std::string::npos) << details;
  EXPECT_EQ(details["text"].get<std::string>().find("Premium"), std::string::npos);
  EXPECT_EQ(details["detailsUrl"], rows[0]["detailsUrl"]);
  EXPECT_TRUE(details["imdb"].is_null() ||
              details["imdb"].get<std::string>().starts_with("http://movies.example/"));
  EXPECT_NE(daemon.listing().find("An+open"), std::string::npos) << daemon.listing();
}

TEST_F(CliTest, SetsADamagedStateFileAsideAndSaysSo) {
  std::filesystem::create_directories(stateFile_.parent_path());
  std::ofstream(stateFile_, std::ios::trunc) << std::string(5000, 'x');
  const std::string text = said({"history"});
  EXPECT_EQ(status_, 0);
  EXPECT_NE(text.find(".corrupt-"), std::string::npos) << text;
  EXPECT_EQ(run({"history"}), "");
}

TEST_F(CliTest, PrintsANameThatIsNotUtf8) {
  Preferences(stateFile_).appendToArray(PreferencesKeys::torrentHistory, "caf\xE9", 50);
  EXPECT_EQ(json({"history"}), nlohmann::json{"caf\xEF\xBF\xBD"});
  EXPECT_EQ(run({"history"}), "caf?\n");
  EXPECT_EQ(status_, 0);
}

TEST_F(CliTest, WhatCannotBeKeptIsRefused) {
  dataHome_ = "/dev/null/x";
  for (const auto& command :
       std::vector<std::vector<std::string>>{{"remote", "set", "--client", "Vuze"},
                                             {"login", "demo"},
                                             {"logout"},
                                             {"filters", "add", "x"},
                                             {"filters", "remove", "1"}}) {
    const std::string text = errors(command, "demo\n");
    EXPECT_EQ(status_, 1) << text;
    EXPECT_NE(text.find("\nveltramoor-cli: Nothing was kept."), std::string::npos) << text;
  }
  EXPECT_TRUE(site_.log().empty()) << "a password was sent for nothing";
}

TEST_F(CliTest, TriesTheRemoteClient) {
  const test::TransmissionDaemon daemon(std::pair("me", "se:cret"));
  const auto configure = [&](const std::string& password) {
    run({"remote", "set", "--client", "Transmission", "--address", "127.0.0.1", "--port",
         daemon.port(), "--user", "me", "--password-stdin"},
        password + "\n");
  };
  const auto inLines = [](const nlohmann::json& steps) {
    std::string lines;
    for (const nlohmann::json& step : steps) {
      lines +=
          (step["ok"].get<bool>() ? "ok    " : "FAIL  ") + step["text"].get<std::string>() + "\n";
    }
    return lines;
  };
  configure("se:cret");
  const nlohmann::json good = json({"remote", "test"});
  EXPECT_EQ(status_, 0);
  ASSERT_FALSE(good.empty());
  EXPECT_EQ(good.back()["step"], nameOf(RemoteStep::Kind));
  EXPECT_EQ(run({"remote", "test"}), inLines(good));
  EXPECT_EQ(status_, 0);
  configure("wrong");
  const nlohmann::json bad = json({"remote", "test"});
  EXPECT_EQ(status_, 1);
  ASSERT_FALSE(bad.empty());
  EXPECT_EQ(bad.back()["step"], nameOf(RemoteStep::Status));
  EXPECT_FALSE(bad.back()["ok"]);
  EXPECT_EQ(run({"remote", "test"}), inLines(bad));
  EXPECT_EQ(status_, 1);
}

TEST_F(CliTest, ExitStatusTellsRefusalFromWrongUsage) {
  for (const auto& wrong : std::vector<std::vector<std::string>>{
           {},
           {"nothing"},
           {"recent", "--page", "-1"},
           {"send", "http://a/b.torrent"},
           {"send", "31"},
           {"send", "magnet:?xt=\xE9"},
           {"send", "magnet:?xt=a", "--name", "caf\xE9"},
           {"remote", "set", "--client", "Vuze", "--address", "caf\xE9"},
           {"remote", "set", "--client", "Vuze", "--user", "caf\xE9"},
           {"remote", "set", "--client", "transmission"},
           {"remote", "set", "--client", "Vuze", "--port", "99999"}}) {
    run(wrong);
    EXPECT_EQ(status_, 2) << testing::PrintToString(wrong);
  }
  const std::string before = run({"history"});
  run({"remote", "set", "--client", "Transmission", "--address", "127.0.0.1", "--port", "1"});
  run({"recent"});
  const nlohmann::json steps = json({"remote", "test"});
  ASSERT_FALSE(steps.empty());
  EXPECT_EQ(errors({"send", "1"}),
            "veltramoor-cli: " + steps.back()["text"].get<std::string>() + "\n");
  EXPECT_EQ(status_, 1);
  EXPECT_TRUE(run({"remote", "show"}).ends_with("user none, no password\n"));
  EXPECT_EQ(run({"history"}), before);
  site_.setFault("/recent", Fault{FaultKind::Close, {}, 0});
  run({"recent"});
  EXPECT_EQ(status_, 1);
}

}  // namespace
}  // namespace veltramoor
