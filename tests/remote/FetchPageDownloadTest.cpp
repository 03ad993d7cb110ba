// Sending a torrent to a real Transmission daemon, and to servers that misbehave.
#include "remote/FetchPageDownload.h"

#include <gtest/gtest.h>

#include "platform/Alerts.h"
#include "platform/ExchangeLog.h"
#include "platform/Preferences.h"
#include "platform/RunLoop.h"
#include "remote/BitClient.h"
#include "remote/DownloadHistory.h"
#include "remote/ServerInfo.h"
#include "support/FullDisk.h"
#include "support/RawServer.h"
#include "support/RemotePeers.h"
#include "support/TemporaryFolder.h"
#include "support/TransmissionDaemon.h"

namespace veltramoor {
namespace {

using namespace std::chrono_literals;
using test::FullDisk;
using test::RawServer;
using test::RecordedRequest;
using test::TransmissionDaemon;
using test::UtorrentPeer;

// The link's entities are handed on undecoded, so that the daemon lists it by its hash.
constexpr char kHash[] = "0123456789abcdef0123456789abcdef01234567";
constexpr char kMagnet[] =
    "magnet:?xt=urn:btih:0123456789abcdef0123456789abcdef01234567&amp;dn=Open+Film";

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
        [&](const std::optional<std::string>& sent, const std::optional<DiagnosisStep>& failure) {
          outcome = sent;
          EXPECT_NE(sent.has_value(), failure.has_value());
          reason_ = failure.value_or(DiagnosisStep{});
        },
        limit_));
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
  std::chrono::milliseconds limit_ = FetchPageDownload::kLongest;
  DiagnosisStep reason_;
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
  EXPECT_EQ(reason_.step, RemoteStep::Settings);
  configure(std::to_string(test::freePort()));
  expectRefusal(kMagnet);  // nobody listens
  EXPECT_EQ(reason_.step, RemoteStep::Port);
  ServerInfo::sharedInstance().setClient("Other");
  expectRefusal(kMagnet);

  // The id changed between handshake and add: 409 once more, and no second try.
  const RawServer stale([](const RecordedRequest&) {
    return RawServer::response(409, "", {"X-Transmission-Session-Id: old"});
  });
  configure(std::to_string(stale.port()));
  expectRefusal(kMagnet);
  EXPECT_EQ(stale.hits(), 2U);
  EXPECT_EQ(reason_.text, "Transmission wants a new session. Send the torrent once more.");
  expectRefusal("not a url");
  EXPECT_EQ(stale.hits(), 2U) << "without a link nothing is asked";
}

TEST_F(FetchPageDownloadTest, SaysWhatTheAnswerToTheSendSaid) {
  const TransmissionDaemon locked(std::pair("me", "secret"));
  configure(locked.port(), "me", "wrong");
  expectRefusal(kMagnet);
  EXPECT_EQ(reason_.step, RemoteStep::Status);
  EXPECT_NE(reason_.text.find("user name or the password"), std::string::npos) << reason_.text;

  const UtorrentPeer token(std::pair("me", "secret"));
  configure(token.port(), "me", "wrong");
  ServerInfo::sharedInstance().setClient("Utorrent");
  expectRefusal(kMagnet);
  EXPECT_EQ(reason_.step, RemoteStep::Status);
  EXPECT_NE(reason_.text.find("does not take the user name"), std::string::npos) << reason_.text;

  // A page's success elsewhere is not the send's.
  const RawServer leadsAway([](const RecordedRequest& request) {
    return request.target == "/login" ? RawServer::response(200, "Welcome")
                                      : RawServer::response(302, "", {"Location: /login"});
  });
  for (const char* kind : {"Transmission", "Utorrent"}) {
    configure(std::to_string(leadsAway.port()));
    ServerInfo::sharedInstance().setClient(kind);
    expectRefusal(kMagnet);
    EXPECT_NE(reason_.text.find("leads elsewhere"), std::string::npos) << reason_.text;
  }
  // The same request at another place is still the send.
  const RawServer moved([](const RecordedRequest& request) {
    return request.target == "/rpc" ? RawServer::response(200)
                                    : RawServer::response(307, "", {"Location: /rpc"});
  });
  configure(std::to_string(moved.port()));
  EXPECT_EQ(send(kMagnet, "Open Film"), "Open Film");
}

TEST_F(FetchPageDownloadTest, AllRequestsTogetherHaveOneDeadline) {
  const RawServer dripping([](const RecordedRequest&) {
    return test::RawReply::dripping(RawServer::response(200, std::string(2000, 'x')), 50ms);
  });
  configure(std::to_string(dripping.port()));
  limit_ = 700ms;
  const auto start = std::chrono::steady_clock::now();
  expectRefusal(kMagnet);
  EXPECT_LT(std::chrono::steady_clock::now() - start, 20s) << "a byte now and then is no answer";
  EXPECT_EQ(dripping.hits(), 1U) << "the handshake had used the time up";
  EXPECT_EQ(reason_.step, RemoteStep::Http) << reason_.text;
}

// Memory may run out anywhere; here it does where each exchange ends.
TEST_F(FetchPageDownloadTest, WhateverIsThrownEndsInTheAlert) {
  const RawServer server([](const RecordedRequest&) { return RawServer::response(200); });
  configure(std::to_string(server.port()));
  UrlLoading::sharedInstance().setExchangeLog(
      [](const ExchangeRecord&) { throw std::bad_alloc(); });
  expectRefusal(kMagnet);
  UrlLoading::sharedInstance().setExchangeLog({});
  EXPECT_FALSE(reason_.ofSettings);
  EXPECT_EQ(send(kMagnet, "Open Film"), "Open Film");
}

TEST_F(FetchPageDownloadTest, SaysThatTheClientWentAwayInBetween) {
  const RawServer stops([](const RecordedRequest& request) {
    return request.method == "GET" ? test::RawReply(RawServer::response(409))
                                   : test::RawReply::reset();
  });
  configure(std::to_string(stops.port()));
  expectRefusal(kMagnet);
  EXPECT_NE(reason_.text.find("went away before it answered"), std::string::npos) << reason_.text;
}

// The file at a link is of no use for the send, and its server may hang.
TEST_F(FetchPageDownloadTest, ALinkThatHangsLeavesTimeForTheSend) {
  const RawServer hangs([](const RecordedRequest&) { return test::RawReply::hang(); });
  const TransmissionDaemon daemon;
  configure(daemon.port());
  limit_ = 4s;
  EXPECT_EQ(send(hangs.url("/a.torrent"), "Open Film"), "Open Film");
}

TEST_F(FetchPageDownloadTest, BlanksAndAnEmptyPortAreNoPartOfTheAddress) {
  const TransmissionDaemon daemon;
  configure(" " + daemon.port() + " ");
  ServerInfo::sharedInstance().setAddress(" 127.0.0.1 ");
  EXPECT_EQ(send(kMagnet, "Open Film"), "Open Film");
  EXPECT_EQ(ServerInfo::sharedInstance().address(), " 127.0.0.1 ") << "stored as typed";

  configure(" ");
  const auto client = BitClient::configured(ServerInfo::sharedInstance());
  ASSERT_NE(client, nullptr);
  EXPECT_EQ(client->getDownload().url()->absoluteString(),
            "http://127.0.0.1:9091/transmission/rpc");
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
