// A real loopback TCP server that keeps the exact bytes it gets and answers with scripted ones.
#pragma once

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <cstddef>
#include <functional>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>
#include <thread>
#include <utility>
#include <vector>

namespace veltramoor::test {

struct RecordedRequest {
  std::string method;
  std::string target;
  /// Request line, header lines and the blank line that ends them, as received.
  std::string head;
  /// Every byte received before the answer, also those past the stated Content-Length.
  std::string body;
  /// Number of the TCP connection, from 0.
  int connection = 0;

  /// Header lines in wire order, without line ends.
  [[nodiscard]] std::vector<std::string> headerLines() const;
  /// First value of a field, name compared without case.
  [[nodiscard]] std::optional<std::string> header(std::string_view name) const;
};

/// What a handler answers. A plain string is sent whole and the connection kept for more requests.
struct RawReply {
  enum class Then { kKeepOpen, kClose, kReset, kHang, kRepeatForever };

  std::string bytes;
  Then then = Then::kKeepOpen;
  /// Not zero: one byte at a time with this pause after each.
  std::chrono::milliseconds drip{0};
  /// What `kRepeatForever` sends after `bytes` until the peer leaves or the server stops.
  std::string repeated;

  RawReply(std::string sent) : bytes(std::move(sent)) {}  // NOLINT(google-explicit-constructor)
  RawReply(const char* sent) : bytes(sent) {}             // NOLINT(google-explicit-constructor)

  /// Sends `sent`, then ends the connection in good order.
  [[nodiscard]] static RawReply close(std::string sent = {});
  /// Sends `sent`, then aborts the connection (RST).
  [[nodiscard]] static RawReply reset(std::string sent = {});
  /// Sends `sent`, then nothing more until the server stops or the peer leaves.
  [[nodiscard]] static RawReply hang(std::string sent = {});
  [[nodiscard]] static RawReply dripping(std::string sent, std::chrono::milliseconds pause);
  [[nodiscard]] static RawReply endless(std::string sent, std::string repeatedBytes);

 private:
  RawReply(std::string sent, Then next) : bytes(std::move(sent)), then(next) {}
};

/// Listens on a free port of 127.0.0.1 from construction to destruction, one thread a connection;
/// so the handler runs on several threads at once. The destructor ends hanging answers too.
class RawServer {
 public:
  using Handler = std::function<RawReply(const RecordedRequest&)>;

  /// `greeting` is what a peer hears as soon as it connects, for servers that speak first.
  explicit RawServer(Handler handler, std::string greeting = {});
  ~RawServer();
  RawServer(const RawServer&) = delete;
  RawServer& operator=(const RawServer&) = delete;

  [[nodiscard]] int port() const { return port_; }
  /// "127.0.0.1:PORT".
  [[nodiscard]] std::string hostAndPort() const;
  /// "http://127.0.0.1:PORT" and `path`.
  [[nodiscard]] std::string url(std::string_view path = "/") const;

  /// In order of arrival, each recorded before its handler runs.
  [[nodiscard]] std::vector<RecordedRequest> requests() const;
  [[nodiscard]] std::size_t hits() const;
  [[nodiscard]] std::size_t hits(std::string_view target) const;
  /// TCP connections accepted so far.
  [[nodiscard]] int connections() const;
  /// Waits until `count` requests have arrived; false when that took more than ten seconds.
  [[nodiscard]] bool waitForHits(std::size_t count) const;
  /// Closes the port and all connections; later connects are refused. Also done on destruction.
  void stop();

  /// A whole HTTP/1.1 answer with a Content-Length (none for 204 and 304). `headerLines` have no
  /// line ends: {"Set-Cookie: a=b", "Location: /x"}.
  [[nodiscard]] static std::string response(int status, std::string_view body = {},
                                            const std::vector<std::string>& headerLines = {});

 private:
  void acceptLoop();
  void serve(int socket, int connection);
  [[nodiscard]] bool answer(int socket, const RawReply& reply);
  /// Whether the socket is ready; false once the server stops or the wait has passed.
  [[nodiscard]] bool waitFor(int socket, short events, int waitMilliseconds = -1) const;
  [[nodiscard]] bool sendAll(int socket, std::string_view bytes) const;
  [[nodiscard]] bool receive(int socket, std::string& buffer) const;

  Handler handler_;
  std::string greeting_;
  int listener_ = -1;
  int stopEvent_ = -1;
  int port_ = 0;
  mutable std::mutex mutex_;
  mutable std::condition_variable arrived_;
  std::vector<RecordedRequest> requests_;
  std::vector<std::thread> workers_;
  std::atomic<int> connections_{0};
  std::thread acceptor_;
};

}  // namespace veltramoor::test
