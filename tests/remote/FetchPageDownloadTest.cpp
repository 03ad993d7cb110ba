// Sending a torrent to a real Transmission daemon, and to servers that misbehave.
#include "remote/FetchPageDownload.h"

#include <gtest/gtest.h>
#include <signal.h>
#include <sys/resource.h>

#include "platform/Alerts.h"
#include "platform/Preferences.h"
#include "platform/RunLoop.h"
#include "remote/DownloadHistory.h"
#include "remote/ServerInfo.h"
#include "support/RawServer.h"
#include "support/TemporaryFolder.h"
#include "support/TransmissionDaemon.h"

namespace veltramoor {
namespace {

using namespace std::chrono_literals;
using test::RawServer;
using test::RecordedRequest;
using test::TransmissionDaemon;

// The link's entities are handed on undecoded, so that the daemon lists it by its hash.
constexpr char kHash[] = "0123456789abcdef0123456789abcdef01234567";
constexpr char kMagnet[] =
    "magnet:?xt=urn:btih:0123456789abcdef0123456789abcdef01234567&amp;dn=Open+Film";

/// No file can grow while one of these lives: a full disk.
class FullDisk {
 public:
  FullDisk() : signal_(signal(SIGXFSZ, SIG_IGN)) {
    getrlimit(RLIMIT_FSIZE, &limit_);
    const rlimit full{0, limit_.rlim_max};
    setrlimit(RLIMIT_FSIZE, &full);
  }
  ~FullDisk() {
    setrlimit(RLIMIT_FSIZE, &limit_);
    signal(SIGXFSZ, signal_);
  }
  FullDisk(const FullDisk&) = delete;
  FullDisk& operator=(const FullDisk&) = delete;

 private:
  void (*signal_)(int);
  rlimit limit_{};
};

class FetchPageDownloadTest : public testing::Test, public AlertPresenter {
 protected:
  FetchPageDownloadTest() {
    Preferences::setSharedInstance(&store_);
    Alerts::setPresenter(this);
  }
  ~FetchPageDownloadTest() override {
    Alerts::setPresenter(nullptr);
    Preferences::setSharedInstance(nullptr);
  }

  void show(Alert alert) override { alerts_.push_back(std::move(alert)); }

  void configure(const std::string& port, const std::string& user = "",
                 const std::string& password = "") {
    ServerInfo& info = ServerInfo::sharedInstance();
    info.setClient("Transmission");
    info.setAddress("127.0.0.1");
    info.setPort(port);
    info.setUsername(user);
    info.setPassword(password);
  }

  std::optional<std::string> send(const std::string& link, const std::string& name) {
    std::optional<std::optional<std::string>> outcome;
    queue_.addOperation(std::make_shared<FetchPageDownload>(
        Url::parse(link), name,
        [&](const std::optional<std::string>& sent, const std::optional<TransferFailure>& failure) {
          outcome = sent;
          reason_ = failure ? std::optional(failure->kind) : std::nullopt;
        }));
    EXPECT_TRUE(loop_.runUntil([&] { return outcome.has_value(); }, 60s));
    return outcome.value_or(std::nullopt);
  }

  void expectRefusal(const std::string& link) {
    const auto before = DownloadHistory::names();
    alerts_.clear();
    EXPECT_EQ(send(link, "Refused"), std::nullopt);
    ASSERT_EQ(alerts_.size(), 1U);
    EXPECT_EQ(alerts_[0].title, "Connection with server failed.");
    EXPECT_EQ(alerts_[0].message,
              "Please make sure you have correctly setup your remote download settings.");
    EXPECT_EQ(alerts_[0].buttons, std::vector<std::string>{"Ok"});
    EXPECT_EQ(DownloadHistory::names(), before);
  }

  RunLoop loop_;
  Preferences store_{std::nullopt};
  std::vector<Alert> alerts_;
  OperationQueue queue_{1};
  std::optional<TransferFailureKind> reason_;
};

TEST_F(FetchPageDownloadTest, TheDaemonHoldsWhatWasSent) {
  const TransmissionDaemon daemon;
  configure(daemon.port());
  EXPECT_EQ(send(kMagnet, "Open Film"), "Open Film");
  EXPECT_NE(daemon.listing().find(kHash), std::string::npos) << daemon.listing();
  EXPECT_EQ(send(kMagnet, "Open Film"), "Open Film") << "a duplicate is accepted";
  EXPECT_EQ(DownloadHistory::names(), (std::vector<std::string>{"Open Film", "Open Film"}));
  EXPECT_TRUE(alerts_.empty());
}

TEST_F(FetchPageDownloadTest, ThePasswordDecides) {
  const TransmissionDaemon daemon(std::pair("me", "pä&s:s"));
  configure(daemon.port(), "me", "wrong");
  expectRefusal(kMagnet);
  configure(daemon.port(), "me", "pä&s:s");
  EXPECT_EQ(send(kMagnet, "Open Film"), "Open Film");
  EXPECT_NE(daemon.listing().find(kHash), std::string::npos) << daemon.listing();
}

TEST_F(FetchPageDownloadTest, EveryOtherFailureIsOneAlert) {
  expectRefusal(kMagnet);  // nothing configured
  EXPECT_EQ(reason_, TransferFailureKind::NoAddress);
  configure(std::to_string(test::freePort()));
  expectRefusal(kMagnet);  // nobody listens
  EXPECT_EQ(reason_, TransferFailureKind::Refused);
  ServerInfo::sharedInstance().setClient("Other");
  expectRefusal(kMagnet);

  // The id changed between handshake and add: 409 once more, and no second try.
  const RawServer stale([](const RecordedRequest&) {
    return RawServer::response(409, "", {"X-Transmission-Session-Id: old"});
  });
  configure(std::to_string(stale.port()));
  expectRefusal(kMagnet);
  EXPECT_EQ(stale.hits(), 2U);
  EXPECT_EQ(reason_, std::nullopt) << "the client was reached";
  expectRefusal("not a url");
  EXPECT_EQ(stale.hits(), 2U) << "without a link nothing is asked";
}

TEST_F(FetchPageDownloadTest, HandsOverWhatFollowsTheLastSlashAndFetchesFiles) {
  const RawServer server([](const RecordedRequest&) { return RawServer::response(200); });
  configure(std::to_string(server.port()));
  EXPECT_EQ(send("magnet:?tr=udp://t.example", "Slashed"), "Slashed");
  EXPECT_NE(server.requests().back().body.find("\"filename\":\"t.example\""), std::string::npos);
  EXPECT_EQ(send(server.url("/get/a.torrent"), "File"), "File");
  EXPECT_EQ(server.hits("/get/a.torrent"), 1U);
  EXPECT_NE(server.requests().back().body.find("\"filename\":\"a.torrent\""), std::string::npos);
}

TEST_F(FetchPageDownloadTest, WhatTheFullDiskDoesNotRememberIsSentAllTheSame) {
  const RawServer server([](const RecordedRequest&) { return RawServer::response(200); });
  const test::TemporaryFolder folder;
  Preferences store(folder / "state.sqlite");
  Preferences::setSharedInstance(&store);
  configure(std::to_string(server.port()));
  EXPECT_EQ(send(kMagnet, "First"), "First");
  EXPECT_TRUE(alerts_.empty());
  {
    const FullDisk fullDisk;
    EXPECT_EQ(send(kMagnet, "Second"), "Second");
  }
  EXPECT_EQ(server.hits(), 4U) << "a handshake and one send for each";
  ASSERT_EQ(alerts_.size(), 1U);
  EXPECT_EQ(alerts_[0].title, "Sent, but not remembered.");
  EXPECT_EQ(alerts_[0].message, store.lastProblem());
  EXPECT_EQ(alerts_[0].buttons, std::vector<std::string>{"Ok"});
  EXPECT_EQ(send(kMagnet, "Third"), "Third");
  EXPECT_EQ(DownloadHistory::names(), (std::vector<std::string>{"First", "Third"}));
  EXPECT_EQ(alerts_.size(), 1U);
  Preferences::setSharedInstance(&store_);
}

TEST_F(FetchPageDownloadTest, RemembersTheNewestFifty) {
  const RawServer server([](const RecordedRequest&) { return RawServer::response(299); });
  configure(std::to_string(server.port()));
  for (int i = 0; i < 51; ++i) {
    send(kMagnet, std::to_string(i));
  }
  const auto names = DownloadHistory::names();
  ASSERT_EQ(names.size(), 50U);
  EXPECT_EQ(names.front(), "1");
  EXPECT_EQ(names.back(), "50");
}

}  // namespace
}  // namespace veltramoor
