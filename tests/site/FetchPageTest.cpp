// How background fetches hand over what they found.
#include "site/FetchPage.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <numeric>
#include <random>
#include <thread>

#include "platform/RunLoop.h"
#include "site/FetchPageAllTorrents.h"
#include "site/FetchPageGeneric.h"
#include "site/FetchPagePost.h"
#include "support/RawServer.h"

namespace veltramoor {
namespace {

using namespace std::chrono_literals;
using test::RawServer;
using test::RecordedRequest;

// Does nothing for a while, or fails.
class Page final : public FetchPage<std::optional<int>> {
 public:
  Page(int number, std::chrono::microseconds delay, bool fails, Completion completion,
       DeliveryPlace place)
      : FetchPage(std::nullopt, std::move(completion), std::move(place)),
        number_(number),
        delay_(delay),
        fails_(fails) {}

 private:
  void fetch() override {
    std::this_thread::sleep_for(delay_);
    if (fails_) {
      throw std::runtime_error("lost");
    }
    returnObject_ = number_;
  }

  int number_;
  std::chrono::microseconds delay_;
  bool fails_;
};

// 1,000 batches of 12 pages on 10 threads with random delays; a page delivered out of its turn in
// one batch of a thousand would be seen.
TEST(FetchPageTest, DeliversStrictlyInOrderWhateverEachPageTakes) {
  RunLoop loop;
  std::mt19937 random(7);
  constexpr int kPages = 12;
  OperationQueue queue(10);
  for (int repetition = 0; repetition < 1000; ++repetition) {
    std::vector<int> numbers(kPages);
    std::iota(numbers.begin(), numbers.end(), 3);
    const auto order = std::make_shared<DeliveryOrder>(numbers);
    std::vector<int> delivered;
    std::vector<bool> arrived;
    for (int i = 0; i < kPages; ++i) {
      const bool fails = random() % 10 == 0;
      queue.addOperation(std::make_shared<Page>(
          i, std::chrono::microseconds(random() % 300), fails,
          [&delivered, &arrived, i, fails](std::optional<int> number) {
            delivered.push_back(i);
            arrived.push_back(number.has_value() != fails);
          },
          DeliveryPlace{order, i + 3, i == 0 ? 999 : i + 2}));
    }
    ASSERT_TRUE(loop.runUntil([&] { return delivered.size() == kPages; }, 30s));
    ASSERT_TRUE(std::is_sorted(delivered.begin(), delivered.end())) << repetition;
    ASSERT_EQ(std::count(arrived.begin(), arrived.end(), true), kPages);
  }
}

TEST(FetchPageTest, ReleasesItsScreenOnTheMainThread) {
  struct Screen {
    explicit Screen(std::atomic<bool>& released) : releasedOnMain(released) {}
    ~Screen() { releasedOnMain = MainThread::isCurrent(); }
    std::atomic<bool>& releasedOnMain;
  };
  RunLoop loop;
  std::atomic<bool> onMain{false};
  bool delivered = false;
  OperationQueue queue(1);
  {
    auto screen = std::make_shared<Screen>(onMain);
    queue.addOperation(std::make_shared<FetchPagePost>(
        std::nullopt, "a=b", [screen, &delivered](bool done) { delivered = done; }));
  }
  ASSERT_TRUE(loop.runUntil([&] { return delivered; }, 10s));
  ASSERT_TRUE(queue.waitUntilAllOperationsAreFinished(10s));
  loop.runPending();
  EXPECT_TRUE(onMain);
}

TEST(FetchPageTest, TellsAFailedTransferFromAPageWithoutRows) {
  RunLoop loop;
  const RawServer server([](const RecordedRequest& request) -> test::RawReply {
    return request.target == "/reset" ? test::RawReply::reset()
                                      : test::RawReply(RawServer::response(404, "<html>"));
  });
  OperationQueue queue(1);
  std::optional<PageTrouble> reason;
  const auto rowsOf = [&](const std::string& path) {
    std::optional<std::optional<std::vector<Torrent>>> outcome;
    queue.addOperation(std::make_shared<FetchPageAllTorrents>(
        Url::parse(server.url(path)),
        [&](std::optional<std::vector<Torrent>> rows, std::optional<PageTrouble> failure) {
          outcome = std::move(rows);
          reason = std::move(failure);
        }));
    EXPECT_TRUE(loop.runUntil([&] { return outcome.has_value(); }, 10s));
    return *outcome;
  };
  EXPECT_EQ(rowsOf("/reset"), std::nullopt);
  ASSERT_TRUE(reason);
  EXPECT_EQ(reason->failure.value().kind, TransferFailureKind::BrokenOff);
  EXPECT_EQ(reason->failure->port, server.port());
  EXPECT_EQ(rowsOf("/none"), std::vector<Torrent>{});
  ASSERT_TRUE(reason);
  EXPECT_EQ(reason->statusCode, 404);

  std::optional<std::string> text;
  queue.addOperation(std::make_shared<FetchPageGeneric>(
      Url::parse(server.url("/text")),
      [&](const std::optional<std::string>& page) { text = page.value_or("absent"); },
      httpRequestClass<HttpRequest>()));
  EXPECT_TRUE(loop.runUntil([&] { return text.has_value(); }, 10s));
  EXPECT_EQ(text, "<html>");

  queue.addOperation(std::make_shared<FetchPageAllTorrents>(Url::parse(server.url("/nobody")),
                                                            FetchPageAllTorrents::Completion()));
  queue.addOperation(std::make_shared<FetchPageAllTorrents>(
      Url::parse(server.url("/nobody")),
      std::function<void(std::optional<std::vector<Torrent>>)>()));
  EXPECT_TRUE(server.waitForHits(5)) << "without a completion the request is made all the same";
  EXPECT_TRUE(queue.waitUntilAllOperationsAreFinished(10s));
  EXPECT_EQ(loop.runPending(), 0U);
}

}  // namespace
}  // namespace veltramoor
