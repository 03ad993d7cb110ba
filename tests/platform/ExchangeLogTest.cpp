// What somebody who asked for it is told of each exchange.
#include "platform/ExchangeLog.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <cstdio>
#include <memory>
#include <mutex>
#include <regex>
#include <thread>

#include "platform/CookieStorage.h"
#include "platform/UrlLoading.h"
#include "support/RawServer.h"

namespace veltramoor {
namespace {

using test::RawReply;
using test::RawServer;
using test::RecordedRequest;

// Standard error goes to a file for as long as this lives.
class CapturedStandardError {
 public:
  CapturedStandardError() : before_(::dup(STDERR_FILENO)), file_(std::tmpfile(), &std::fclose) {
    if (before_ < 0 || !file_ || ::dup2(::fileno(file_.get()), STDERR_FILENO) < 0) {
      throw std::runtime_error("standard error cannot be captured");
    }
  }
  ~CapturedStandardError() {
    ::dup2(before_, STDERR_FILENO);
    ::close(before_);
  }
  CapturedStandardError(const CapturedStandardError&) = delete;
  CapturedStandardError& operator=(const CapturedStandardError&) = delete;

  [[nodiscard]] std::string text() const {
    std::string bytes(static_cast<std::size_t>(::lseek(STDERR_FILENO, 0, SEEK_END)), '\0');
    EXPECT_EQ(::pread(STDERR_FILENO, bytes.data(), bytes.size(), 0),
              static_cast<ssize_t>(bytes.size()));
    return bytes;
  }

 private:
  int before_;
  std::unique_ptr<std::FILE, decltype(&std::fclose)> file_;
};

const std::string kMoved =
    RawServer::response(302, "moved", {"Set-Cookie: id=sesame", "Location: /end?token=sesame#a"});

class ExchangeLogTest : public testing::Test {
 protected:
  // Has something to hide wherever there can be something.
  [[nodiscard]] UrlRequest request() const {
    return {
        .url = Url::parse("http://me:sesame@" + server_.hostAndPort() + "/form?token=sesame&a=b")
                   .value(),
        .method = "POST",
        .headers = {{"Authorization", "Basic sesame"}, {"X-Session-Id", "sesame"}},
        .body = "password=sesame"};
  }

  RawServer server_{[](const RecordedRequest& request) -> RawReply {
    return request.target.starts_with("/form") ? RawReply(kMoved)
                                               : RawReply::close(
                                                     "HTTP/1.1 200 OK\r\n"
                                                     "Content-Length: 9\r\n\r\n1234");
  }};
  CookieStorage cookies_{std::nullopt};
  UrlLoading loading_{cookies_};
};

TEST_F(ExchangeLogTest, TellsOfEachHopOnce) {
  std::vector<ExchangeRecord> records;
  loading_.setExchangeLog([&](const ExchangeRecord& record) { records.push_back(record); });
  const auto failure = loading_.send(request()).failure;
  ASSERT_EQ(records.size(), 2U);
  EXPECT_EQ(records[0].method, "POST");
  EXPECT_EQ(records[0].address, server_.url("/form?token=...&a=b"));
  EXPECT_EQ(records[0].statusCode, 302);
  EXPECT_FALSE(records[0].failure);
  EXPECT_EQ(records[0].bytesReceived, kMoved.size());
  EXPECT_EQ(records[1].method, "GET");
  EXPECT_EQ(records[1].address, server_.url("/end?token=..."));
  EXPECT_FALSE(records[1].statusCode);
  ASSERT_TRUE(failure);
  EXPECT_EQ(records[1].failure, failure);
  loading_.abandonAll();
  static_cast<void>(loading_.send(request()));
  ASSERT_EQ(records.size(), 3U) << "also of what was given up before";
  EXPECT_EQ(records[2].failure->kind, TransferFailureKind::GivenUp);
  EXPECT_EQ(records[2].bytesReceived, 0U);
}

TEST_F(ExchangeLogTest, WritesWholeLinesWithoutSecretsAndOnlyWhenAsked) {
  constexpr int kThreads = 8;
  constexpr int kRequests = 25;
  const CapturedStandardError captured;
  EXPECT_TRUE(loading_.send(request()).failure);
  EXPECT_EQ(captured.text(), "");
  loading_.setExchangeLog(&writeToStandardError);
  {
    std::vector<std::jthread> threads;
    for (int i = 0; i < kThreads; ++i) {
      threads.emplace_back([this] {
        for (int n = 0; n < kRequests; ++n) {
          EXPECT_TRUE(loading_.send(request()).failure);
        }
      });
    }
    for (int n = 0; n < kRequests; ++n) {
      loading_.setExchangeLog(&writeToStandardError);  // while others call it
    }
  }
  loading_.setExchangeLog({});
  EXPECT_TRUE(loading_.send(request()).failure);

  const std::string text = captured.text();
  EXPECT_EQ(text.find("sesame"), std::string::npos);
  const std::regex line(
      R"rx((POST http://127\.0\.0\.1:\d+/form\?token=\.\.\.&a=b 302|)rx"
      R"rx(GET http://127\.0\.0\.1:\d+/end\?token=\.\.\. broken off \(.+\)), \d+ bytes, \d+ ms)rx");
  int lines = 0;
  for (std::size_t begin = 0; begin < text.size(); ++lines) {
    const std::size_t end = text.find('\n', begin);
    ASSERT_NE(end, std::string::npos);
    EXPECT_TRUE(std::regex_match(text.substr(begin, end - begin), line)) << text.substr(begin, 200);
    begin = end + 1;
  }
  EXPECT_EQ(lines, kThreads * kRequests * 2);
}

TEST(ExchangeLogAddressTest, LeavesOutWhatOpensDoors) {
  for (const auto& [url, shown] : {
           std::pair("http://u:p@h:1/gui/?token=x&action=add-url&s=magnet:?xt=urn:btih:0&tr=a",
                     "http://h:1/gui/?token=...&action=add-url&s=magnet:?xt=urn:btih:0&tr=a"),
           std::pair("http://h/?a=1;TOKEN=x;b", "http://h/?a=1;TOKEN=...;b"),
           std::pair("http://h/?to=http://i/?token=x=y", "http://h/?to=http://i/?token=..."),
           std::pair("http://h/token=kept?tokens=kept&token&mytoken=kept",
                     "http://h/token=kept?tokens=kept&token&mytoken=kept"),
           std::pair("http://h/p#token=x", "http://h/p"),
           std::pair("http://h/?token=#x", "http://h/?token=..."),
       }) {
    EXPECT_EQ(addressForLog(Url::parse(url).value()), shown);
  }
  EXPECT_EQ(lineOf({.method = "GET\n\x1b", .address = "http://h/", .statusCode = 200}),
            "GET http://h/ 200, 0 bytes, 0 ms");
}

}  // namespace
}  // namespace veltramoor
