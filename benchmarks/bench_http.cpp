// How many pages a second 10 threads fetch over loopback: raw sockets, which no client can beat,
// against the application's own requests and a new libcurl handle for each request.
//
// Fails when the application reaches less than half of the raw sockets' rate, or less than 2.5
// times that of the new handles. The three take turns, round by round, and their medians are
// compared, so that a busy machine slows all of them alike.
#include <curl/curl.h>
#include <fmt/core.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <memory>
#include <string>
#include <thread>
#include <vector>

#include "PageServer.h"
#include "Ratio.h"
#include "site/HttpRequest.h"
#include "support/TemporaryFolder.h"

namespace veltramoor {
namespace {

constexpr std::size_t kPageSize = std::size_t{80} * 1024;
constexpr int kPages = 500;
constexpr int kThreads = 10;
constexpr int kRounds = 31;
constexpr double kMostOfRawSockets = 2.0;
constexpr double kMostOfNewHandles = 0.4;

/// Fetches one page on the thread of that number; false when what came was not the page.
using Fetch = std::function<bool(int thread)>;

[[noreturn]] void giveUp(const char* why) {
  fmt::print(stderr, "bench_http: {}\n", why);
  std::exit(2);
}

double millisecondsForAllPages(const Fetch& fetch) {
  const auto start = std::chrono::steady_clock::now();
  {
    std::vector<std::jthread> threads;
    for (int thread = 0; thread < kThreads; ++thread) {
      threads.emplace_back([&fetch, thread] {
        for (int i = 0; i < kPages / kThreads; ++i) {
          if (!fetch(thread)) {
            giveUp("a page did not arrive");
          }
        }
      });
    }
  }
  return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start)
      .count();
}

double median(std::vector<double> values) {
  std::sort(values.begin(), values.end());
  return values[values.size() / 2];
}

/// One kept connection, blocking.
class RawClient {
 public:
  explicit RawClient(const PageServer& server)
      : socket_(::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0)),
        answerSize_(server.answerSize()) {
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    address.sin_port = htons(static_cast<std::uint16_t>(server.port()));
    if (::connect(socket_, reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0) {
      giveUp("no connection to the server");
    }
  }
  ~RawClient() { ::close(socket_); }
  RawClient(const RawClient&) = delete;
  RawClient& operator=(const RawClient&) = delete;

  bool fetch() {
    constexpr std::string_view kRequest =
        "GET /page HTTP/1.1\r\nHost: 127.0.0.1\r\nAccept: */*\r\nContent-Type: text/html\r\n\r\n";
    if (::send(socket_, kRequest.data(), kRequest.size(), MSG_NOSIGNAL) < 0) {
      return false;
    }
    std::size_t received = 0;
    while (received < answerSize_) {
      const ssize_t got = ::recv(socket_, buffer_.data(), buffer_.size(), 0);
      if (got <= 0) {
        return false;
      }
      received += static_cast<std::size_t>(got);
    }
    return received == answerSize_;
  }

 private:
  int socket_;
  std::size_t answerSize_;
  std::vector<char> buffer_ = std::vector<char>(std::size_t{128} * 1024);
};

std::size_t append(const char* data, std::size_t size, std::size_t count, void* text) {
  static_cast<std::string*>(text)->append(data, size * count);
  return size * count;
}

bool fetchWithNewHandle(const std::string& url) {
  const std::unique_ptr<CURL, decltype(&curl_easy_cleanup)> handle(curl_easy_init(),
                                                                   &curl_easy_cleanup);
  std::string page;
  curl_easy_setopt(handle.get(), CURLOPT_URL, url.c_str());
  curl_easy_setopt(handle.get(), CURLOPT_NOSIGNAL, 1L);
  curl_easy_setopt(handle.get(), CURLOPT_WRITEFUNCTION, &append);
  curl_easy_setopt(handle.get(), CURLOPT_WRITEDATA, &page);
  return curl_easy_perform(handle.get()) == CURLE_OK && page.size() == kPageSize;
}

bool fetchWithHttpRequest(const Url& url) {
  HttpRequest request(url);
  request.request();
  return request.isResponseValid() && request.result() && request.result()->size() == kPageSize;
}

}  // namespace
}  // namespace veltramoor

int main() {
  using namespace veltramoor;
  // Cookies are stored as in the application, but not in the person's own file.
  const test::TemporaryFolder home;
  ::setenv("XDG_DATA_HOME", home.path().c_str(), 1);
  curl_global_init(CURL_GLOBAL_DEFAULT);

  const PageServer server(std::string(kPageSize, 'x'));
  const Url url = Url::parse("http://127.0.0.1:" + std::to_string(server.port()) + "/page").value();
  std::vector<std::unique_ptr<RawClient>> clients;
  for (int i = 0; i < kThreads; ++i) {
    clients.push_back(std::make_unique<RawClient>(server));
  }

  struct Contender {
    const char* name;
    Fetch fetch;
    std::vector<double> milliseconds = {};
  };
  std::vector<Contender> contenders{
      {"raw sockets", [&](int i) { return clients[static_cast<std::size_t>(i)]->fetch(); }},
      {"HttpRequest", [&](int) { return fetchWithHttpRequest(url); }},
      {"new libcurl handles", [&](int) { return fetchWithNewHandle(url.absoluteString()); }},
  };
  // The first turn opens connections and files; it is not counted.
  for (int round = 0; round <= kRounds; ++round) {
    for (Contender& contender : contenders) {
      const double time = millisecondsForAllPages(contender.fetch);
      if (round > 0) {
        contender.milliseconds.push_back(time);
      }
    }
  }

  fmt::print("{} pages of {} bytes on {} threads, median of {} rounds\n", kPages, kPageSize,
             kThreads, kRounds);
  std::vector<double> medians;
  for (const Contender& contender : contenders) {
    medians.push_back(median(contender.milliseconds));
    fmt::print("{}: {:.0f} pages/s\n", contender.name, 1000 * kPages / medians.back());
  }
  Ratios ratios;
  ratios.report("HttpRequest to raw sockets", kMostOfRawSockets, medians[1], medians[0]);
  ratios.report("HttpRequest to new libcurl handles", kMostOfNewHandles, medians[1], medians[2]);
  return ratios.exitCode();
}
