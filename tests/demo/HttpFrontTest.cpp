#include "demo/HttpFront.h"

#include <curl/curl.h>
#include <gtest/gtest.h>
#include <poll.h>

#include <array>
#include <memory>
#include <string>
#include <string_view>

#include "demo/DemoSite.h"

namespace veltramoor {
namespace {

/// What comes back for `bytes` on a connection of their own, up to its end.
std::string rawAnswer(const DemoSite& site, std::string_view bytes) {
  const std::unique_ptr<CURL, void (*)(CURL*)> curl(curl_easy_init(), curl_easy_cleanup);
  curl_easy_setopt(curl.get(), CURLOPT_URL, site.url("/").c_str());
  curl_easy_setopt(curl.get(), CURLOPT_CONNECT_ONLY, 1L);
  EXPECT_EQ(curl_easy_perform(curl.get()), CURLE_OK);
  curl_socket_t socket = CURL_SOCKET_BAD;
  curl_easy_getinfo(curl.get(), CURLINFO_ACTIVESOCKET, &socket);
  std::string answer;
  std::array<char, 4096> piece{};
  const auto ready = [socket](short events) {
    pollfd waited{socket, events, 0};
    return ::poll(&waited, 1, 10'000) > 0;
  };
  for (CURLcode code = CURLE_OK; !bytes.empty() && ready(POLLOUT);) {
    std::size_t count = 0;
    code = curl_easy_send(curl.get(), bytes.data(), bytes.size(), &count);
    // Refused halfway: the answer is there all the same.
    bytes.remove_prefix(code == CURLE_OK || code == CURLE_AGAIN ? count : bytes.size());
  }
  while (ready(POLLIN)) {
    std::size_t count = 0;
    const CURLcode code = curl_easy_recv(curl.get(), piece.data(), piece.size(), &count);
    if ((code == CURLE_OK && count == 0) || (code != CURLE_OK && code != CURLE_AGAIN)) {
      return answer;
    }
    answer.append(piece.data(), code == CURLE_OK ? count : 0);
  }
  ADD_FAILURE() << "the connection stays open after " << answer;
  return answer;
}

TEST(HttpFrontTest, AnswersWhateverAClientSends) {
  const DemoSite site({.torrents = 10});
  const std::string end = "Host: x\r\nConnection: close\r\n\r\n";
  EXPECT_TRUE(rawAnswer(site, "no request\r\n\r\n").starts_with("HTTP/1.1 400 "));
  for (const std::size_t size : {std::size_t{70'000}, (std::size_t{1} << 20U) + 100}) {
    const std::string field = "X: " + std::string(size, 'x') + "\r\n";
    EXPECT_TRUE(rawAnswer(site, "GET / HTTP/1.1\r\n" + field + end).starts_with("HTTP/1.1 431 "))
        << size;
  }
  EXPECT_TRUE(rawAnswer(site, "DELETE / HTTP/1.1\r\n" + end).starts_with("HTTP/1.1 405 "));
  EXPECT_TRUE(site.log().empty());

  const std::string head = rawAnswer(site, "HEAD / HTTP/1.1\r\n" + end);
  EXPECT_TRUE(head.starts_with("HTTP/1.1 200 ") && head.ends_with("\r\n\r\n")) << head;
  const std::string two =
      rawAnswer(site, "GET / HTTP/1.1\r\nHost: x\r\n\r\nGET /recent/1 HTTP/1.0\r\nHost: x\r\n\r\n");
  EXPECT_NE(two.find("HTTP/1.1 200 "), std::string::npos);
  EXPECT_NE(two.find("</html>\nHTTP/1.0 200 "), std::string::npos) << two;

  const std::string posted = rawAnswer(
      site,
      "POST /login?a=b+c&=&d HTTP/1.1\r\nTransfer-Encoding: chunked\r\nExpect: 100-continue\r\n" +
          end + "3\r\nuse\r\n5\r\nrname\r\n0\r\n\r\n");
  EXPECT_TRUE(posted.starts_with("HTTP/1.1 100 Continue\r\n\r\nHTTP/1.1 200 ")) << posted;
  EXPECT_EQ(site.log().back().body, "username");
  EXPECT_EQ(site.log().size(), 4U);
}

TEST(HttpFrontTest, AFaultKeepsToTheRequestAndHarmsNobodyElse) {
  DemoSite site({.torrents = 10});
  const std::string end = " HTTP/1.1\r\nHost: x\r\nConnection: close\r\n\r\n";
  site.setFault("/", {.kind = FaultKind::Endless});
  EXPECT_TRUE(rawAnswer(site, "HEAD /" + end).ends_with("\r\n\r\n"));
  site.setFault("/", {.kind = FaultKind::Drip});
  EXPECT_TRUE(rawAnswer(site, "GET /veltramoor.php" + end).starts_with("HTTP/1.1 200 "));
  // A Location that no field can hold.
  site.setFault("/", {.kind = FaultKind::RedirectLoop});
  EXPECT_TRUE(
      rawAnswer(site, "GET /" + std::string(70'000, 'x') + end).starts_with("HTTP/1.1 500 "));
  site.setFault("/", {.kind = FaultKind::Reset});
  EXPECT_FALSE(rawAnswer(site, "GET /logout" + end).empty())
      << "a redirect has no body to be halved";
  site.clearFaults();
  EXPECT_TRUE(rawAnswer(site, "GET /" + end).starts_with("HTTP/1.1 200 "));
}

}  // namespace
}  // namespace veltramoor
