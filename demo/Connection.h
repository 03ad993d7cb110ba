// One client's socket as the HTTP library wants to see it.
#pragma once

#include <httplib.h>

#include <array>
#include <chrono>
#include <mutex>
#include <set>

namespace veltramoor {

/// The sockets that are open, so that stopping can end them all. Thread-safe.
class OpenSockets {
 public:
  /// Shuts `socket` down at once when `endAll` was called already.
  void add(int socket);
  /// Closes it; no other thread touches it afterwards.
  void close(int socket);
  /// Wakes every thread that waits for one of the sockets, and all that come later.
  void endAll();

 private:
  std::mutex mutex_;
  std::set<int> sockets_;
  bool ended_ = false;
};

/// Reads and writes block until the client, or `OpenSockets::endAll`, ends the connection.
class Connection final : public httplib::Stream {
 public:
  Connection(int socket, OpenSockets& sockets);
  ~Connection() override;
  Connection(const Connection&) = delete;
  Connection& operator=(const Connection&) = delete;

  [[nodiscard]] bool is_readable() const override;
  [[nodiscard]] bool is_writable() const override { return !ended_; }
  ssize_t read(char* to, size_t size) override;
  ssize_t write(const char* from, size_t size) override;
  void get_remote_ip_and_port(std::string& ip, int& port) const override;
  void get_local_ip_and_port(std::string& ip, int& port) const override;
  [[nodiscard]] socket_t socket() const override { return socket_; }

  /// True after `time` (negative: never); false as soon as the client has gone.
  bool pause(std::chrono::milliseconds time);
  /// Nothing more is sent; what the library still writes is lost.
  void end() { ended_ = true; }
  /// The same, and closing answers with a TCP reset.
  void reset();
  [[nodiscard]] bool ended() const { return ended_; }

 private:
  int socket_;
  OpenSockets& sockets_;
  bool ended_ = false;
  std::array<char, 8192> buffer_{};
  std::size_t begin_ = 0;
  std::size_t end_ = 0;
};

}  // namespace veltramoor
