// When an exchange with a server that does not answer comes to its end.
#include <gtest/gtest.h>

#include <atomic>
#include <stop_token>
#include <thread>

#include "platform/CookieStorage.h"
#include "platform/UrlLoading.h"
#include "support/RawServer.h"

namespace veltramoor {
namespace {

using namespace std::chrono_literals;
using test::RawReply;
using test::RawServer;
using test::RecordedRequest;

UrlRequest requestTo(const std::string& url) { return {.url = Url::parse(url).value()}; }

class UrlLoadingEndTest : public testing::Test {
 protected:
  // Sends on a client of its own and says how long that took.
  std::chrono::milliseconds timeToFail(const UrlRequest& request, const UrlLoadingLimits& limits) {
    UrlLoading client(cookies_, limits);
    const auto start = std::chrono::steady_clock::now();
    const UrlResult result = client.send(request);
    EXPECT_FALSE(result.response);
    EXPECT_FALSE(result.data);
    return std::chrono::duration_cast<std::chrono::milliseconds>(std::chrono::steady_clock::now() -
                                                                 start);
  }

  CookieStorage cookies_{std::nullopt};
  UrlLoading loading_{cookies_};
};

TEST_F(UrlLoadingEndTest, ATimeoutCountsTheTimeWithoutAByte) {
  // Far between, so that a busy machine does not make a pause of a drip.
  constexpr auto kInterval = 600ms;
  constexpr auto kDrip = 10ms;
  const std::string answer = RawServer::response(200, "12345678");
  const RawServer server([&](const RecordedRequest& request) -> RawReply {
    if (request.target == "/silent") return RawReply::hang();
    if (request.target == "/stuck") return RawReply::hang(answer.substr(0, answer.size() - 1));
    if (request.target == "/slow") return RawReply::dripping(answer, kDrip);
    return RawReply::dripping(RawServer::response(200, std::string(10'000, 'x')), kDrip);
  });
  const UrlLoadingLimits limits{.timeoutInterval = kInterval};
  for (const char* path : {"/silent", "/stuck"}) {
    const auto time = timeToFail(requestTo(server.url(path)), limits);
    EXPECT_GE(time, kInterval) << path;
    EXPECT_LT(time, 3s) << path;
  }
  UrlRequest ownInterval = requestTo(server.url("/silent"));
  ownInterval.timeoutInterval = 100ms;
  EXPECT_LT(timeToFail(ownInterval, {}), 2s);
  const auto capped = timeToFail(requestTo(server.url("/endless")), limits);
  EXPECT_GE(capped, limits.hardCapFactor * kInterval);
  EXPECT_LT(capped, 5s);
  // Longer than the interval as a whole, byte by byte through the head, too.
  UrlLoading patient(cookies_, {.timeoutInterval = kInterval, .hardCapFactor = 50});
  EXPECT_EQ(patient.send(requestTo(server.url("/slow"))).data, "12345678");
}

TEST_F(UrlLoadingEndTest, ServersThatAreGoneFailAtOnce) {
  RawServer server([](const auto&) { return RawServer::response(200); });
  ASSERT_TRUE(loading_.send(requestTo(server.url())).response);
  server.stop();
  EXPECT_LT(timeToFail(requestTo(server.url()), {}), 5s);
  EXPECT_FALSE(loading_.send(requestTo(server.url())).response);
}

TEST_F(UrlLoadingEndTest, AStopEndsOneExchangeAndAbandoningAll) {
  const RawServer server([](const auto&) { return RawReply::hang(); });
  const auto start = std::chrono::steady_clock::now();
  std::stop_source stop;
  UrlRequest stopped = requestTo(server.url());
  stopped.stop = stop.get_token();
  std::atomic<int> ended = 0;
  {
    std::vector<std::jthread> waiting;
    for (int i = 0; i < 4; ++i) {
      waiting.emplace_back([&, i] {
        EXPECT_FALSE(loading_.send(i == 0 ? stopped : requestTo(server.url())).response);
        ++ended;
      });
    }
    ASSERT_TRUE(server.waitForHits(4));
    stop.request_stop();
    waiting.front().join();
    EXPECT_EQ(ended, 1);
    EXPECT_FALSE(loading_.send(stopped).response) << "asked for before it began";
    loading_.abandonAll();
    EXPECT_FALSE(loading_.send(requestTo(server.url())).response);
  }
  EXPECT_EQ(server.hits(), 4U);
  EXPECT_LT(std::chrono::steady_clock::now() - start, 10s);
}

}  // namespace
}  // namespace veltramoor
