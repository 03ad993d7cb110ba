#include "demo/Connection.h"

#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>

namespace veltramoor {
namespace {

/// Whether `events` came before the time was over. A signal starts the wait anew.
bool waitFor(int socket, int events, int milliseconds) {
  pollfd waited{socket, static_cast<short>(events), 0};
  int count = 0;
  do {
    count = ::poll(&waited, 1, milliseconds);
  } while (count < 0 && errno == EINTR);
  return count > 0;
}

}  // namespace

void OpenSockets::add(int socket) {
  const std::lock_guard lock(mutex_);
  sockets_.insert(socket);
  if (ended_) {
    ::shutdown(socket, SHUT_RDWR);
  }
}

void OpenSockets::close(int socket) {
  const std::lock_guard lock(mutex_);
  sockets_.erase(socket);
  ::close(socket);
}

void OpenSockets::endAll() {
  const std::lock_guard lock(mutex_);
  ended_ = true;
  for (const int socket : sockets_) {
    ::shutdown(socket, SHUT_RDWR);
  }
}

Connection::Connection(int socket, OpenSockets& sockets) : socket_(socket), sockets_(sockets) {
  sockets_.add(socket_);
}

Connection::~Connection() { sockets_.close(socket_); }

bool Connection::is_readable() const {
  return begin_ < end_ || (!ended_ && waitFor(socket_, POLLIN, -1));
}

ssize_t Connection::read(char* to, size_t size) {
  if (begin_ == end_) {
    if (ended_ || !waitFor(socket_, POLLIN, -1)) {
      return -1;
    }
    const ssize_t got = ::recv(socket_, buffer_.data(), buffer_.size(), 0);
    if (got <= 0) {
      ended_ = true;
      return got;
    }
    begin_ = 0;
    end_ = static_cast<std::size_t>(got);
  }
  const std::size_t taken = std::min(size, end_ - begin_);
  std::memcpy(to, buffer_.data() + begin_, taken);
  begin_ += taken;
  return static_cast<ssize_t>(taken);
}

ssize_t Connection::write(const char* from, size_t size) {
  std::size_t sent = 0;
  while (!ended_ && sent < size) {
    const ssize_t now = ::send(socket_, from + sent, size - sent, MSG_NOSIGNAL | MSG_DONTWAIT);
    if (now >= 0) {
      sent += static_cast<std::size_t>(now);
    } else if (errno == EAGAIN || errno == EWOULDBLOCK) {
      waitFor(socket_, POLLOUT, -1);
    } else if (errno != EINTR) {
      ended_ = true;
    }
  }
  return ended_ ? -1 : static_cast<ssize_t>(sent);
}

void Connection::get_remote_ip_and_port(std::string& ip, int& port) const {
  ip = "127.0.0.1";
  port = 0;
}

void Connection::get_local_ip_and_port(std::string& ip, int& port) const {
  get_remote_ip_and_port(ip, port);
}

bool Connection::pause(std::chrono::milliseconds time) {
  if (!ended_ && waitFor(socket_, POLLRDHUP, static_cast<int>(time.count()))) {
    ended_ = true;
  }
  return !ended_;
}

void Connection::reset() {
  const linger hard{1, 0};
  ::setsockopt(socket_, SOL_SOCKET, SO_LINGER, &hard, sizeof hard);
  ended_ = true;
}

}  // namespace veltramoor
