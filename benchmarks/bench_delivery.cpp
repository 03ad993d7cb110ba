// Pages fetched in parallel and delivered in order, measured against the server's own time.
#include <curl/curl.h>
#include <fmt/core.h>

#include <algorithm>
#include <charconv>
#include <chrono>
#include <cstdlib>
#include <functional>
#include <memory>
#include <numeric>
#include <random>
#include <string>
#include <thread>
#include <vector>

#include "ListingPages.h"
#include "Ratio.h"
#include "platform/OperationQueue.h"
#include "platform/RunLoop.h"
#include "platform/Url.h"
#include "site/FetchPageAllTorrents.h"
#include "support/RawServer.h"
#include "support/TemporaryFolder.h"

namespace veltramoor {
namespace {

using namespace std::chrono_literals;
using test::RawServer;
using test::RecordedRequest;

constexpr int kPages = 50;
constexpr int kAtOnce = 10;
constexpr std::chrono::microseconds kServerTime = 100ms;
constexpr int kRounds = 11;
constexpr double kLimit = 1.15;
constexpr int kOrderRounds = 1000;
constexpr unsigned kMostDelayMicroseconds = 2000;

[[noreturn]] void giveUp(const std::string& why) {
  fmt::print(stderr, "bench_delivery: {}\n", why);
  std::exit(2);
}

/// What `/whole/MICROSECONDS` and `/none/MICROSECONDS` are answered with after that time: a whole
/// listing page, or one without rows.
RawServer::Handler pages(std::size_t* wholeSize) {
  const std::string page = listingPage();
  *wholeSize = page.size();
  return [whole = RawServer::response(200, page),
          none = RawServer::response(200, "<html></html>")](const RecordedRequest& request) {
    const std::size_t slash = request.target.rfind('/') + 1;
    int microseconds = 0;
    std::from_chars(request.target.data() + slash, request.target.data() + request.target.size(),
                    microseconds);
    std::this_thread::sleep_for(std::chrono::microseconds(microseconds));
    return test::RawReply(request.target.starts_with("/whole/") ? whole : none);
  };
}

/// Fetches one batch as the favourites do, page `i` from `url(i)`; milliseconds until the last one
/// is delivered. Ends the program when a page is out of its turn, or has not `rows` rows.
double fetchBatch(RunLoop& loop, OperationQueue& queue, std::size_t rows,
                  const std::function<Url(int)>& url) {
  std::vector<int> numbers(kPages);
  std::iota(numbers.begin(), numbers.end(), 0);
  std::vector<int> delivered;
  const auto start = std::chrono::steady_clock::now();
  const auto order = std::make_shared<DeliveryOrder>(numbers);
  for (int i = 0; i < kPages; ++i) {
    queue.addOperation(std::make_shared<FetchPageAllTorrents>(
        url(i),
        [&delivered, i, rows](const std::optional<std::vector<Torrent>>& torrents) {
          if (!torrents || torrents->size() != rows) {
            giveUp("a page did not arrive whole");
          }
          delivered.push_back(i);
        },
        DeliveryPlace{order, i, i == 0 ? 999 : i - 1}));
  }
  if (!loop.runUntil([&] { return delivered.size() == kPages; }, 60s)) {
    giveUp(fmt::format("{} of {} pages delivered in a minute", delivered.size(), kPages));
  }
  const auto end = std::chrono::steady_clock::now();
  if (delivered != numbers) {
    fmt::print("a page was delivered out of its turn\n");
    std::exit(1);
  }
  return std::chrono::duration<double, std::milli>(end - start).count();
}

}  // namespace
}  // namespace veltramoor

int main() {
  using namespace veltramoor;
  // Cookies are stored as in the application, but not in the person's own file.
  const test::TemporaryFolder home;
  ::setenv("XDG_DATA_HOME", home.path().c_str(), 1);
  curl_global_init(CURL_GLOBAL_DEFAULT);

  std::size_t pageSize = 0;
  const RawServer server(pages(&pageSize));
  const auto urlOf = [&server](const char* kind, auto microseconds) {
    return Url::parse(server.url(fmt::format("/{}/{}", kind, microseconds))).value();
  };
  RunLoop loop;
  OperationQueue queue(kAtOnce);

  const Url whole = urlOf("whole", kServerTime.count());
  std::vector<double> milliseconds;
  // The first batch opens connections and threads, as the first one of a list does.
  for (int round = 0; round < kRounds; ++round) {
    milliseconds.push_back(fetchBatch(loop, queue, 30, [&](int) { return whole; }));
  }
  std::sort(milliseconds.begin(), milliseconds.end());
  const double floor =
      std::chrono::duration<double, std::milli>(kServerTime).count() * kPages / kAtOnce;
  fmt::print("{} pages of {} bytes, {} at a time, {:.0f} ms each: {:.1f} to {:.1f} ms\n", kPages,
             pageSize, kAtOnce, floor * kAtOnce / kPages, milliseconds.front(),
             milliseconds.back());
  Ratios ratios;
  ratios.report("last of the pages delivered", kLimit, milliseconds[kRounds / 2], floor);

  std::minstd_rand random(7);
  for (int round = 0; round < kOrderRounds; ++round) {
    fetchBatch(loop, queue, 0,
               [&](int) { return urlOf("none", random() % (kMostDelayMicroseconds + 1)); });
  }
  fmt::print("{} batches with random delays: every page in its turn\n", kOrderRounds);
  return ratios.exitCode();
}
