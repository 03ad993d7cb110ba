// What is said of an exchange that failed.
#include "platform/TransferFailure.h"

#include <arpa/inet.h>
#include <gtest/gtest.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

#include <array>
#include <stop_token>
#include <thread>

#include "platform/CookieStorage.h"
#include "platform/UrlLoading.h"
#include "support/RawServer.h"
#include "support/TransmissionDaemon.h"

namespace veltramoor {
namespace {

using namespace std::chrono_literals;
using Kind = TransferFailureKind;
using test::RawReply;
using test::RawServer;
using test::RecordedRequest;

// Has room for one connection that nobody accepts, and that one is taken: later ones get no answer.
class FullPort {
 public:
  FullPort() {
    address_.sin_family = AF_INET;
    address_.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    socklen_t size = sizeof address_;
    auto* generic = reinterpret_cast<sockaddr*>(&address_);
    for (int& socket : sockets_) {
      socket = ::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
    }
    if (::bind(sockets_[0], generic, size) != 0 || ::listen(sockets_[0], 0) != 0 ||
        ::getsockname(sockets_[0], generic, &size) != 0 ||
        ::connect(sockets_[1], generic, size) != 0) {
      throw std::runtime_error("no loopback port");
    }
  }
  ~FullPort() {
    for (const int socket : sockets_) {
      ::close(socket);
    }
  }
  FullPort(const FullPort&) = delete;
  FullPort& operator=(const FullPort&) = delete;
  [[nodiscard]] int number() const { return ntohs(address_.sin_port); }

 private:
  std::array<int, 2> sockets_{-1, -1};
  sockaddr_in address_{};
};

class TransferFailureTest : public testing::Test {
 protected:
  struct Case {
    std::string host;
    int port;
    std::string path;
    std::optional<Kind> kind;
    /// A part of what is said.
    std::string words = {};
    std::string scheme = "http";
  };

  // With credentials in each address, of which nothing must be said.
  void expect(const Case& c) {
    SCOPED_TRACE(c.host + ":" + std::to_string(c.port) + c.path);
    const std::string url = c.scheme + "://me:sesame@" + c.host + ":" + std::to_string(c.port);
    const UrlResult result = loading_.send({.url = Url::parse(url + c.path + "?q=sesame").value()});
    ASSERT_EQ(result.response.has_value(), !result.failure.has_value());
    ASSERT_EQ(result.data.has_value(), !result.failure.has_value());
    ASSERT_EQ(result.failure.has_value(), c.kind.has_value());
    if (const auto& failure = result.failure) {
      EXPECT_EQ(nameOf(failure->kind), nameOf(*c.kind)) << failure->words;
      EXPECT_NE(failure->words, "");
      EXPECT_NE(failure->words.find(c.words), std::string::npos) << failure->words;
      EXPECT_EQ(failure->words.find("sesame"), std::string::npos) << failure->words;
      EXPECT_EQ(failure->words.find('\n'), std::string::npos) << failure->words;
      // Where the transport tells the address that a name led to, that stands behind it.
      EXPECT_TRUE(failure->address == c.host || failure->address == c.host + " (127.0.0.1)")
          << failure->address;
      EXPECT_EQ(failure->port, c.port);
    }
  }

  CookieStorage cookies_{std::nullopt};
  UrlLoadingLimits limits_{.timeoutInterval = 400ms, .maximumBodySize = 1000};
  UrlLoading loading_{cookies_, limits_};
};

TEST_F(TransferFailureTest, KnowsWhyThereIsNoConnection) {
  const RawServer banner([](const auto&) { return RawReply::hang(); }, "SSH-2.0-OpenSSH_9.2\r\n");
  const FullPort full;
  for (const Case& c : std::vector<Case>{
           {"127.0.0.1", test::freePort(), "/", Kind::Refused, "connect to 127.0.0.1"},
           // The loopback's broadcast address: the system itself sends nothing there.
           {"127.255.255.255", 9, "/", Kind::Unreachable, "127.255.255.255"},
           {"localhost", test::freePort(), "/", Kind::Refused, "connect to localhost"},
           {"nobody.invalid", 8080, "/", Kind::NameNotFound, "nobody.invalid"},
           {"127.0.0.1", full.number(), "/", Kind::TimedOut},
           {"localhost", banner.port(), "/", Kind::Tls, "", "https"},
           {"127.0.0.1", banner.port(), "/", Kind::NotHttp},
       }) {
    expect(c);
  }
}

TEST_F(TransferFailureTest, KnowsWhatIsWrongWithAnAnswer) {
  const std::string ok = "HTTP/1.1 200 OK\r\n";
  const std::string sized = ok + "Content-Length: 9\r\n\r\n1234";
  const auto moved = [](const std::string& location) {
    return RawServer::response(302, "", {"Location: " + location});
  };
  struct Answer {
    RawReply reply;
    std::optional<Kind> kind;
    std::string words = {};
  };
  const std::string sizeLimit = std::to_string(limits_.maximumBodySize);
  const std::vector<Answer> answers{
      {RawReply::close(), Kind::BrokenOff},
      {RawReply::close(sized), Kind::BrokenOff, "5 bytes"},
      {RawReply::reset(sized), Kind::BrokenOff},
      {RawReply::close(ok + "Transfer-Encoding: chunked\r\n\r\n5\r\n12"), Kind::BrokenOff},
      {RawReply::hang(), Kind::TimedOut, "No byte for 400 ms"},
      {RawReply::hang(sized), Kind::TimedOut, "No byte for 400 ms"},
      {RawReply::dripping(RawServer::response(200, std::string(900, 'x')), 25ms), Kind::TimedOut,
       "Not complete within"},
      {RawReply::endless(ok + "\r\n", "123456789"), Kind::TooLarge, sizeLimit},
      {RawReply(RawServer::response(200, std::string(limits_.maximumBodySize, 'x'))), std::nullopt},
      {RawReply::endless(ok, "X: " + std::string(995, 'x') + "\r\n"), Kind::TooLarge,
       std::to_string(limits_.maximumHeaderSize)},
      {RawReply::close(ok + "X: " + std::string(150'000, 'x') + "\r\n\r\n"), Kind::TooLarge},
      {RawReply::close("hello\r\n"), Kind::NotHttp},
      {RawReply::close("ICY 200 OK\r\n\r\n"), Kind::NotHttp},
      {RawReply::close("\x15\x03\x01\x02\x02\x46"), Kind::NotHttp},
      {RawReply::close("HTTP/7.0 200 OK\r\n\r\n"), Kind::NotHttp},
      {RawReply(RawServer::response(200, "none", {"Content-Encoding: gzip"})), Kind::Other},
      {RawReply(moved("/17")), Kind::TooManyRedirects, std::to_string(limits_.maximumRedirects)},
      {RawReply(moved("/17")), Kind::TooManyRedirects},
      {RawReply(moved("magnet:?xt=urn:btih:0")), std::nullopt},
      {RawReply(moved("http://[no")), std::nullopt},
  };
  const RawServer server([&](const RecordedRequest& request) {
    return answers[std::stoul(request.target.substr(1))].reply;
  });
  for (std::size_t i = 0; i < answers.size(); ++i) {
    expect(
        {"127.0.0.1", server.port(), "/" + std::to_string(i), answers[i].kind, answers[i].words});
  }
  const RawServer elsewhere(
      [&](const auto&) { return moved("http://127.255.255.255:9/?q=sesame"); });
  const UrlResult result = loading_.send({.url = Url::parse(elsewhere.url()).value()});
  ASSERT_TRUE(result.failure);
  EXPECT_EQ(result.failure->address, "127.255.255.255") << "where the redirect led";
  EXPECT_EQ(result.failure->port, 9);
}

TEST_F(TransferFailureTest, TellsWhatWasGivenUpFromWhatFailed) {
  const RawServer server([](const auto&) { return RawReply::hang(); });
  UrlLoading patient(cookies_);
  std::stop_source stop;
  const UrlRequest request{.url = Url::parse(server.url()).value(), .stop = stop.get_token()};
  const auto kind = [&] { return patient.send(request).failure.value().kind; };
  {
    const std::jthread waiting([&] { EXPECT_EQ(kind(), Kind::GivenUp); });
    ASSERT_TRUE(server.waitForHits(1));
    stop.request_stop();
  }
  EXPECT_EQ(kind(), Kind::GivenUp) << "before it was sent";
  patient.abandonAll();
  EXPECT_EQ(patient.send({.url = request.url}).failure.value().kind, Kind::GivenUp);
  patient.resume();
  EXPECT_EQ(patient.send({.url = request.url, .method = "A B"}).failure.value().kind, Kind::Other);
  EXPECT_EQ(server.hits(), 1U);
}

TEST(TransferFailurePlaceTest, NamesHostAndPortAlone) {
  const auto at = [](const char* url) {
    return failureAt(Url::parse(url).value(), Kind::Other, "two\r\nlines");
  };
  EXPECT_EQ(at("http://u:p@[::1]:8/path?q"),
            (TransferFailure{Kind::Other, "two lines", "[::1]", 8}));
  EXPECT_EQ(at("https://Host.example/"),
            (TransferFailure{Kind::Other, "two lines", "host.example", 443}));
}

}  // namespace
}  // namespace veltramoor
