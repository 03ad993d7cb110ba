#include "demo/Faults.h"

#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <nlohmann/json.hpp>
#include <thread>

#include "demo/DemoSite.h"
#include "demo/Fetch.h"
#include "regex/RegexKitLiteAdditions.h"
#include "site/TorrentScraping.h"

namespace veltramoor {
namespace {

using namespace std::chrono_literals;
using test::Client;

std::size_t rowCount(const std::string& page) {
  return arrayOfCaptureComponentsMatchedByRegex(page, kTorrentRowRegex).size();
}

std::size_t count(const std::string& text, const std::string& part) {
  std::size_t found = 0;
  for (auto at = text.find(part); at != std::string::npos; at = text.find(part, at + 1)) {
    ++found;
  }
  return found;
}

class FaultsTest : public ::testing::Test {
 protected:
  test::Fetched fetch(FaultKind kind) {
    site.setFault("/recent", {.kind = kind});
    return client.get(site.url("/recent/0"));
  }

  DemoSite site;
  Client client;
};

TEST_F(FaultsTest, TransfersThatFail) {
  client.timeoutMs = 300;
  EXPECT_EQ(fetch(FaultKind::Hang).code, CURLE_OPERATION_TIMEDOUT);
  client.timeoutMs = 30'000;
  EXPECT_EQ(fetch(FaultKind::Close).code, CURLE_GOT_NOTHING);

  const auto reset = fetch(FaultKind::Reset);
  EXPECT_EQ(reset.code, CURLE_RECV_ERROR) << "a plain end would be CURLE_PARTIAL_FILE";
  EXPECT_EQ(reset.status, 200);
  EXPECT_GT(reset.body.size(), 20'000U);

  client.limit = 20'000'000;
  const auto endless = fetch(FaultKind::Endless);
  EXPECT_EQ(endless.code, CURLE_WRITE_ERROR);
  EXPECT_GT(endless.body.size(), client.limit);

  client.limit = 100'000'000;
  client.timeoutMs = 1'000;
  const auto drip = fetch(FaultKind::Drip);
  EXPECT_EQ(drip.code, CURLE_OPERATION_TIMEDOUT);
  EXPECT_EQ(drip.status, 200);
  EXPECT_GE(drip.body.size(), 2U);
  EXPECT_LE(drip.body.size(), 12U);

  client.timeoutMs = 30'000;
  site.clearFaults();
  EXPECT_EQ(rowCount(client.get(site.url("/recent/0")).body), 30U) << "the site did not recover";
}

TEST_F(FaultsTest, AnswersThatAreTooMuchOrTooOdd) {
  client.gzip = true;
  const auto bomb = fetch(FaultKind::Bomb);
  EXPECT_EQ(bomb.code, CURLE_OK);
  EXPECT_GE(bomb.body.size(), 64U << 20U);
  EXPECT_LT(bomb.received, 200'000);
  client.gzip = false;

  EXPECT_GE(fetch(FaultKind::Headers).header.size(), 300'000U);
  const auto big = fetch(FaultKind::Big).body;
  EXPECT_GE(big.size(), 5'000'000U);
  EXPECT_EQ(rowCount(big), 0U);
  const auto flood = fetch(FaultKind::TrFlood).body;
  EXPECT_GE(count(flood, "<tr"), 10'000U);
  EXPECT_EQ(count(flood, "Uploaded"), 0U);
  EXPECT_NE(fetch(FaultKind::InvalidUtf8).body.find("\xFF\xFE"), std::string::npos);
  EXPECT_EQ(fetch(FaultKind::Error500).status, 500);
  const auto loop = fetch(FaultKind::RedirectLoop);
  EXPECT_EQ(loop.status, 302);
  EXPECT_NE(loop.header.find("Location: /recent/0\r\n"), std::string::npos);
}

TEST_F(FaultsTest, ListingsWithOddMarkup) {
  const auto quotes =
      arrayOfCaptureComponentsMatchedByRegex(fetch(FaultKind::QuoteMagnet).body, kTorrentRowRegex);
  ASSERT_EQ(quotes.size(), 30U);
  EXPECT_NE(quotes[0][4].find("&quot;"), std::string::npos);
  EXPECT_NE(quotes[1][4].find("it's"), std::string::npos);

  const auto other = fetch(FaultKind::OtherLayout).body;
  EXPECT_EQ(count(other, "/torrent/"), 30U);
  EXPECT_EQ(count(other, "Uploaded "), 0U);
  const auto lacking = fetch(FaultKind::NoUploaded).body;
  EXPECT_EQ(count(lacking, "Uploaded "), 27U);
  EXPECT_EQ(count(lacking, "class=\"detLink\""), 30U);

  site.setFault("/torrent", {.kind = FaultKind::OtherLayout});
  const std::string id = std::to_string(site.catalogue().all()[0].id);
  const auto details = client.get(site.url("/torrent/" + id)).body;
  EXPECT_EQ(count(details, "<div id=\"detailsframe\">"), 1U);
  EXPECT_EQ(count(details, "<div id=\"comments\">"), 0U);
}

TEST_F(FaultsTest, TheLongestPrefixStrikesAsOftenAsToldAfterItsDelay) {
  site.setFault("/", {.kind = FaultKind::Error500});
  site.setFault("/recent/1", {.delay = 150ms, .times = 2});
  const auto start = std::chrono::steady_clock::now();
  EXPECT_EQ(client.get(site.url("/recent/1")).status, 200);
  EXPECT_EQ(client.get(site.url("/recent/1")).status, 200);
  EXPECT_GE(std::chrono::steady_clock::now() - start, 300ms);
  EXPECT_EQ(client.get(site.url("/recent/1")).status, 500);
  EXPECT_EQ(client.get(site.url("/top/all")).status, 500);
}

TEST_F(FaultsTest, TheSameOverHttp) {
  const auto control = [&](const std::string& path) {
    return client.post(site.url("/_demo/" + path), "").status;
  };
  EXPECT_EQ(control("faults?path=/recent&fault=error500&delay=1&times=1"), 200);
  EXPECT_EQ(client.get(site.url("/recent/0?x=%41")).status, 500);
  EXPECT_EQ(client.get(site.url("/recent/0")).status, 200);
  EXPECT_EQ(control("faults?path=/recent&fault=nonsense"), 400);
  EXPECT_EQ(control("nonsense"), 404);
  client.setCookie("Set-Cookie: language=en_EN; domain=127.0.0.1; path=/");
  client.post(site.url("/login"), "username=a&password=b%FF\xFF");

  const auto log = nlohmann::json::parse(client.get(site.url("/_demo/log")).body);
  ASSERT_EQ(log.size(), 3U);
  EXPECT_EQ(log[0]["target"], "/recent/0?x=%41");
  EXPECT_EQ(log[2]["method"], "POST");
  EXPECT_EQ(log[2]["cookies"], nlohmann::json::parse(R"([["language","en_EN"]])"));
  EXPECT_EQ(site.log()[2].body, "username=a&password=b%FF\xFF");
  EXPECT_EQ(control("log/clear"), 200);
  EXPECT_TRUE(site.log().empty());
}

TEST(FaultsStopTest, StoppingEndsConnectionsThatWaitOrStream) {
  for (const FaultKind kind : {FaultKind::Hang, FaultKind::Endless, FaultKind::Drip}) {
    auto site = std::make_unique<DemoSite>(DemoSiteOptions{.torrents = 50});
    site->setFault("/", {.kind = kind});
    const std::string url = site->url("/");
    std::atomic<int> code = CURLE_OK;
    std::jthread waiting([&] {
      Client client;
      client.limit = SIZE_MAX;
      code = client.get(url).code;
    });
    while (site->log().empty()) {
      std::this_thread::sleep_for(1ms);
    }
    site.reset();
    waiting.join();
    EXPECT_NE(code, CURLE_OK);
    EXPECT_NE(code, CURLE_OPERATION_TIMEDOUT);
  }
}

}  // namespace
}  // namespace veltramoor
