// The application's window, measured against an empty one: first frame, memory, processes.
#include <fmt/core.h>

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <exception>
#include <filesystem>
#include <functional>
#include <optional>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

#include "ChildProgram.h"
#include "PreferencesKeys.h"
#include "Ratio.h"
#include "demo/DemoSite.h"
#include "platform/Preferences.h"
#include "platform/StateFile.h"
#include "support/Places.h"
#include "support/TemporaryFolder.h"

namespace veltramoor {
namespace {

using namespace std::chrono_literals;

constexpr int kStarts = 31;
constexpr int kMemoryRounds = 3;
constexpr std::size_t kRows = 300;
constexpr double kFirstFrameLimit = 2.0;
constexpr double kMemoryLimit = 1.5;

/// A display for both programs: the person's, or a virtual one for the time of the run.
class Display {
 public:
  Display() {
    if (std::getenv("DISPLAY") != nullptr || std::getenv("WAYLAND_DISPLAY") != nullptr) {
      return;
    }
    server_.emplace(std::vector<std::string>{"Xvfb", "-displayfd", "1", "-screen", "0",
                                             "400x800x24", "-nolisten", "tcp"});
    ::setenv("DISPLAY", (":" + server_->readLine(20s)).c_str(), 1);
  }

 private:
  std::optional<ChildProgram> server_;
};

class Program {
 public:
  explicit Program(std::vector<std::string> arguments) : arguments_(std::move(arguments)) {}

  /// Starts it; milliseconds until its first frame.
  double start() {
    running_.reset();
    running_.emplace(arguments_);
    if (running_->readLine(60s) != "first frame") {
      throw std::runtime_error("an unexpected line from " + arguments_.front());
    }
    return running_->millisecondsSinceStart();
  }
  void stop() { running_.reset(); }
  [[nodiscard]] const ChildProgram& running() const { return running_.value(); }

 private:
  std::vector<std::string> arguments_;
  std::optional<ChildProgram> running_;
};

Program application(const DemoSite& site) {
  return Program({test::program("veltramoor"), "--report-first-frame", "--window-size", "360x720",
                  "--site-host", site.host(), "--notice-host", site.host()});
}

double median(std::vector<double> values) {
  std::sort(values.begin(), values.end());
  return values[values.size() / 2];
}

void waitForPageRequest(const DemoSite& site) {
  const auto end = std::chrono::steady_clock::now() + 30s;
  const auto isPage = [](const DemoRequest& request) {
    return request.target.starts_with("/recent/");
  };
  while (std::ranges::none_of(site.log(), isPage)) {
    if (std::chrono::steady_clock::now() > end) {
      throw std::runtime_error("the application did not ask for its list");
    }
    std::this_thread::sleep_for(20ms);
  }
}

/// Medians of both, taking turns; the first turn fills caches and is not counted.
std::pair<double, double> takeTurns(int rounds, const std::function<double()>& measured,
                                    const std::function<double()>& floor) {
  std::vector<double> ours;
  std::vector<double> theirs;
  for (int round = 0; round <= rounds; ++round) {
    const double our = measured();
    const double their = floor();
    if (round > 0) {
      ours.push_back(our);
      theirs.push_back(their);
    }
  }
  return {median(ours), median(theirs)};
}

int run() {
  // Both programs get the same environment, with folders of their own. The run-time folder stays,
  // for it holds a Wayland display's socket.
  const test::TemporaryFolder home;
  for (const char* name :
       {"XDG_DATA_HOME", "XDG_CONFIG_HOME", "XDG_CACHE_HOME", "XDG_STATE_HOME"}) {
    const std::filesystem::path folder = home / name;
    std::filesystem::create_directory(folder);
    ::setenv(name, folder.c_str(), 1);
  }
  ::setenv("XDG_RUNTIME_DIR", home.path().c_str(), 0);
  const Display display;
  Program empty({test::program("bench-empty-window")});
  bool good = true;

  {
    const DemoSite site;
    Program app = application(site);
    const auto [ours, floor] = takeTurns(
        kStarts,
        [&] {
          const double time = app.start();
          app.stop();
          return time;
        },
        [&] {
          const double time = empty.start();
          empty.stop();
          return time;
        });
    Ratios ratios;
    ratios.report("first frame", kFirstFrameLimit, ours, floor);
    good = ratios.exitCode() == 0;
  }

  // From the login screen on to the list by itself, as for a person who has chosen so.
  Preferences(defaultStateFile()).setString(PreferencesKeys::automaticLogin, "YES");
  DemoSite site({.pageRows = kRows});
  Program app = application(site);
  std::size_t processes = 0;
  const auto [ours, floor] = takeTurns(
      kMemoryRounds,
      [&] {
        site.clearLog();
        app.start();
        waitForPageRequest(site);
        const double kib = static_cast<double>(app.running().settledResidentKib(30s));
        processes = std::max(processes, app.running().children());
        app.stop();
        return kib;
      },
      [&] {
        empty.start();
        const double kib = static_cast<double>(empty.running().settledResidentKib(30s));
        empty.stop();
        return kib;
      });
  const bool small = ours <= kMemoryLimit * floor;
  fmt::print("memory with {} rows: {:.1f} MiB, floor {:.1f} MiB, ratio {:.3f} (limit {:.2f}) {}\n",
             kRows, ours / 1024, floor / 1024, ours / floor, kMemoryLimit,
             small ? "ok" : "TOO MUCH");
  fmt::print("processes started by the application: {} (limit 0) {}\n", processes,
             processes == 0 ? "ok" : "TOO MANY");
  return good && small && processes == 0 ? 0 : 1;
}

}  // namespace
}  // namespace veltramoor

int main() {
  try {
    return veltramoor::run();
  } catch (const std::exception& error) {
    fmt::print(stderr, "bench_window: {}\n", error.what());
    return 2;
  }
}
