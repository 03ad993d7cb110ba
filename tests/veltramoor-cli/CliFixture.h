// The terminal program, run as a person would, with a demo site and a state folder of its own.
#pragma once

#include <SQLiteCpp/SQLiteCpp.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "demo/DemoSite.h"
#include "support/Places.h"
#include "support/TemporaryFolder.h"
#include "support/TransmissionDaemon.h"

namespace veltramoor::test {

class CliFixture : public testing::Test {
 protected:
  /// Standard output; `input` is what standard input holds.
  std::string run(const std::vector<std::string>& arguments, const std::string& input = {}) {
    return outputOf(command({}, {"--site-host", siteHost_}, arguments), &status_, input);
  }
  /// Standard error.
  std::string errors(const std::vector<std::string>& arguments, const std::string& input = {}) {
    return outputOf(command({"sh", "-c", "exec \"$@\" 2>&1 >/dev/null", "sh"},
                            {"--site-host", siteHost_}, arguments),
                    &status_, input);
  }
  /// Both outputs, without a site.
  std::string said(const std::vector<std::string>& arguments) {
    return outputOf(command({"sh", "-c", "exec \"$@\" 2>&1", "sh"}, {}, arguments), &status_);
  }
  nlohmann::json json(std::vector<std::string> arguments) {
    arguments.emplace_back("--json");
    const std::string output = run(std::move(arguments));
    return output.empty() ? nlohmann::json() : nlohmann::json::parse(output);
  }

  /// Has the state file refuse such changes, as a full disk would: "INSERT ON cookies".
  void refuseChanges(const std::string& what) {
    SQLite::Database(stateFile_.string(), SQLite::OPEN_READWRITE)
        .exec("CREATE TRIGGER full_disk BEFORE " + what +
              " BEGIN SELECT RAISE(ABORT, 'no room'); END");
  }

  const std::string kCli = program("veltramoor-cli");
  const TemporaryFolder folder_;
  std::string dataHome_ = folder_.path().string();
  std::filesystem::path stateFile_ = folder_ / "veltramoor/veltramoor.sqlite";
  DemoSite site_;
  std::string siteHost_ = site_.host();
  int status_ = -1;

 private:
  [[nodiscard]] std::vector<std::string> command(std::vector<std::string> before,
                                                 const std::vector<std::string>& options,
                                                 const std::vector<std::string>& arguments) const {
    before.insert(before.end(), {"env", "XDG_DATA_HOME=" + dataHome_,
                                 "XDG_CONFIG_HOME=" + folder_.path().string(), kCli});
    before.insert(before.end(), options.begin(), options.end());
    before.insert(before.end(), arguments.begin(), arguments.end());
    return before;
  }
};

}  // namespace veltramoor::test
