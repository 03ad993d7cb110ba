// Requests that their caller waits for: how long, and what goes on meanwhile.
#include "shell/overlay/SynchronousRequest.h"

#include <QElapsedTimer>
#include <QTimer>

#include "shell/overlay/LoadingIndicator.h"
#include "support/RawServer.h"
#include "support/ScreenTest.h"

namespace veltramoor {
namespace {

using namespace std::chrono_literals;
using test::RawReply;
using test::RawServer;
using test::RecordedRequest;

class SynchronousRequestTest : public test::ScreenTest {
 protected:
  VeltramoorAppDelegate delegate_;
};

TEST_F(SynchronousRequestTest, ReturnsInTimeWhateverTheServerDoes) {
  const std::string whole = RawServer::response(200, std::string(100'000, 'x'));
  // All of them stay until the end, or their own end would end the transfers that were given up on.
  std::vector<std::unique_ptr<RawServer>> servers;
  struct Case {
    const char* what;
    RawReply reply;
    bool finishes;
  };
  for (const Case& c : {
           Case{"hangs at once", RawReply::hang(), false},
           Case{"hangs in the page", RawReply::hang(whole.substr(0, 5000)), false},
           Case{"drips", RawReply::dripping(whole, 10ms), false},
           Case{"hangs again", RawReply::hang(), false},
           // Were the transfers given up on still running, no worker would be left after this one.
           Case{"hangs once more", RawReply::hang(), false},
           Case{"is slow", RawReply::dripping(RawServer::response(200, "slow"), 2ms), true},
           Case{"answers", whole, true},
           Case{"hangs up", RawReply::close(), true},
       }) {
    SCOPED_TRACE(c.what);
    servers.push_back(
        std::make_unique<RawServer>([reply = c.reply](const RecordedRequest&) { return reply; }));
    int turns = 0;
    QTimer turning;
    QObject::connect(&turning, &QTimer::timeout, [&] { ++turns; });
    turning.start(10ms);
    QElapsedTimer clock;
    clock.start();
    const auto request = std::make_shared<HttpRequest>(Url::parse(servers.back()->url()));
    EXPECT_EQ(requestSynchronously(request, c.finishes ? 9s : 500ms, GivingUp::No),
              c.finishes ? WaitEnd::Finished : WaitEnd::GivenUp);
    if (c.finishes) {
      EXPECT_EQ(request->result().has_value(), std::string(c.what) != "hangs up");
      continue;
    }
    EXPECT_GE(clock.elapsed(), 450);
    EXPECT_LT(clock.elapsed(), 5000);
    EXPECT_GE(turns, 5) << "the window is drawn on";
  }
}

// What the overlay offers holds for as long as the wait, also when the overlay stays for another.
TEST_F(SynchronousRequestTest, TheOfferToTapGoesWithTheWait) {
  const RawServer server([](const RecordedRequest&) { return RawReply::hang(); });
  LoadingIndicator& overlay = LoadingIndicator::current();
  overlay.setString("Loading...");
  overlay.showLoadingIndicators();
  bool offered = false;
  QObject::connect(&overlay, &LoadingIndicator::changed, &delegate_,
                   [&] { offered = offered || !overlay.hint().isEmpty(); });
  const auto request = std::make_shared<HttpRequest>(Url::parse(server.url()));
  EXPECT_EQ(requestSynchronously(request, 3500ms, GivingUp::Allowed), WaitEnd::GivenUp);
  EXPECT_TRUE(offered);
  EXPECT_TRUE(overlay.isShown());
  EXPECT_EQ(overlay.hint(), QString());
  overlay.hideLoadingIndicators();
}

}  // namespace
}  // namespace veltramoor
