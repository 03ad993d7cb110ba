// A batch of favourites, from the first request to the last row in the model, and how long it holds
// the screen's thread.
#include <fmt/core.h>

#include <QGuiApplication>
#include <QTimer>
#include <algorithm>
#include <cstdlib>
#include <memory>
#include <string>
#include <thread>
#include <vector>

#include "ListingPages.h"
#include "LoopGap.h"
#include "Ratio.h"
#include "lists/FavoriteListViewController.h"
#include "platform/Preferences.h"
#include "platform/SiteConfiguration.h"
#include "shell/VeltramoorAppDelegate.h"
#include "support/RawServer.h"
#include "support/TemporaryFolder.h"

namespace veltramoor {
namespace {

using namespace std::chrono_literals;
using test::RawServer;

constexpr int kPages = 50;
constexpr int kAtOnce = 10;
constexpr std::chrono::milliseconds kServerTime = 100ms;
constexpr int kRounds = 11;
constexpr double kLimit = 1.2;
constexpr double kHeldLimitMs = 16;
constexpr double kHostileHeldLimitMs = 50;

struct Batch {
  double milliseconds = 0;
  double held = 0;
  /// How long of that the thread ran.
  double ran = 0;
};

/// Runs the event loop from `begin` until the list's batch has ended.
Batch run(FavoriteListViewController& list, const std::function<void()>& begin) {
  LoopGap gap;
  QTimer timer;
  timer.setTimerType(Qt::PreciseTimer);
  QObject::connect(&timer, &QTimer::timeout, [&gap] { gap.turn(); });
  timer.start(1);
  QEventLoop loop;
  const auto watching =
      QObject::connect(&list, &FavoriteListViewController::batchLoaded, [&](bool arrived) {
        if (!arrived) {
          fmt::print(stderr, "bench_favorites: no page arrived\n");
          std::exit(2);
        }
        loop.quit();
      });
  begin();
  loop.exec();
  gap.turn();
  QObject::disconnect(watching);
  return {gap.total(), gap.longest(), gap.ranInLongest()};
}

double median(std::vector<double> values) {
  std::ranges::sort(values);
  return values[values.size() / 2];
}

std::shared_ptr<FavoriteListViewController> listWith(Preferences& store,
                                                     const std::vector<std::string>& filters) {
  store.setArray("Veltramoor_filters", filters);
  return std::make_shared<FavoriteListViewController>(TableViewStyle::Plain);
}

bool reportHeld(const std::string& what, double held, double limit) {
  const bool good = held <= limit;
  fmt::print("{}: {:.1f} ms (limit {:.0f} ms) {}\n", what, held, limit, good ? "ok" : "TOO LONG");
  return good;
}

int measure() {
  const RawServer server(
      [page = RawServer::response(200, listingPage())](const test::RecordedRequest&) {
        std::this_thread::sleep_for(kServerTime);
        return test::RawReply(page);
      });
  SiteConfiguration configuration;
  configuration.siteHost = server.hostAndPort();
  SiteConfiguration::setCurrent(configuration);
  Preferences store(std::nullopt);
  Preferences::setSharedInstance(&store);
  store.setString("Veltramoor_favoritesCount", std::to_string(kPages));
  VeltramoorAppDelegate delegate;

  std::vector<std::string> filters{"e"};
  for (int i = 1; i < 20; ++i) {
    filters.push_back(fmt::format("word{}|(19|20)0{}.*[a-f]{}", i, i % 10, i % 3));
  }
  auto list = listWith(store, filters);
  std::vector<double> times;
  std::vector<double> held;
  std::vector<double> ran;
  for (int round = 0; round < kRounds; ++round) {
    const Batch batch =
        run(*list, [&] { round == 0 ? list->viewWillAppear() : list->didRefresh(); });
    times.push_back(batch.milliseconds);
    held.push_back(batch.held);
    ran.push_back(batch.ran);
  }
  fmt::print("{} pages, {} at a time, {} filters: {} rows, {:.1f} to {:.1f} ms\n", kPages, kAtOnce,
             filters.size(), list->rows()->torrentCount(), *std::ranges::min_element(times),
             *std::ranges::max_element(times));
  if (list->rows()->torrentCount() < kPages) {
    fmt::print(stderr, "bench_favorites: the filters accept next to nothing\n");
    return 2;
  }
  Ratios ratios;
  ratios.report("last row in the model", kLimit, median(times),
                static_cast<double>(kServerTime.count()) * kPages / kAtOnce);
  fmt::print("screen's thread held in each round, and how long of that it ran:");
  for (std::size_t i = 0; i < held.size(); ++i) {
    fmt::print(" {:.1f} ({:.1f})", held[i], ran[i]);
  }
  fmt::print(" ms\n");
  bool good =
      reportHeld("screen's thread held at most", *std::ranges::max_element(held), kHeldLimitMs);

  std::vector<std::string> hostile;
  for (int i = 0; i < 20; ++i) {
    hostile.push_back(fmt::format("(.|.|.)+(.|.)+[\\u0001]{{{}}}", i + 1));
  }
  list = listWith(store, hostile);
  const Batch batch = run(*list, [&] { list->viewWillAppear(); });
  fmt::print("20 hostile filters: {} given up on, {:.0f} ms in all\n",
             list->filters().givenUp().size(), batch.milliseconds);
  good =
      reportHeld("screen's thread held by them at most", batch.held, kHostileHeldLimitMs) && good;
  while (list->hasBackgroundWork()) {
    std::this_thread::sleep_for(1ms);
  }
  return good ? ratios.exitCode() : 1;
}

}  // namespace
}  // namespace veltramoor

int main(int argc, char** argv) {
  const veltramoor::test::TemporaryFolder home;
  ::setenv("XDG_DATA_HOME", home.path().c_str(), 1);
  ::setenv("XDG_RUNTIME_DIR", home.path().c_str(), 1);
  ::setenv("QT_QPA_PLATFORM", "offscreen", 1);
  const QGuiApplication application(argc, argv);
  return veltramoor::measure();
}
