// The terminal program, run as a person would, with a demo site and a state folder of its own.
#pragma once

#include <gtest/gtest.h>

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
  std::string run(std::vector<std::string> arguments, const std::string& input = {}) {
    arguments.insert(arguments.begin(),
                     {"env", "XDG_DATA_HOME=" + dataHome_, kCli, "--site-host", site_.host()});
    return outputOf(arguments, &status_, input);
  }
  /// Both outputs, without a site.
  std::string said(std::vector<std::string> arguments) {
    arguments.insert(arguments.begin(), {"sh", "-c", "exec \"$@\" 2>&1", "sh", "env",
                                         "XDG_DATA_HOME=" + dataHome_, kCli});
    return outputOf(arguments, &status_);
  }
  nlohmann::json json(std::vector<std::string> arguments) {
    arguments.emplace_back("--json");
    const std::string output = run(std::move(arguments));
    return output.empty() ? nlohmann::json() : nlohmann::json::parse(output);
  }

  const std::string kCli = program("veltramoor-cli");
  const TemporaryFolder folder_;
  std::string dataHome_ = folder_.path().string();
  DemoSite site_;
  int status_ = -1;
};

}  // namespace veltramoor::test
