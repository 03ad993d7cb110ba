// A loopback server that costs next to nothing: it answers every request with one fixed page.
#pragma once

#include <atomic>
#include <string>
#include <thread>
#include <vector>

namespace veltramoor {

/// Serves kept connections on 127.0.0.1, a free port, with two threads that share the connections.
class PageServer {
 public:
  explicit PageServer(const std::string& page);
  ~PageServer();
  PageServer(const PageServer&) = delete;
  PageServer& operator=(const PageServer&) = delete;

  [[nodiscard]] int port() const { return port_; }
  /// Bytes of one whole answer, head included.
  [[nodiscard]] std::size_t answerSize() const { return answer_.size(); }

 private:
  void serve(int poller);
  /// False when the peer has gone.
  [[nodiscard]] bool answerRequest(int socket) const;

  std::string answer_;
  int listener_ = -1;
  int port_ = 0;
  std::atomic<bool> stopping_{false};
  std::vector<int> pollers_;
  std::vector<std::thread> threads_;
};

}  // namespace veltramoor
