#include "PageServer.h"

#include <netinet/in.h>
#include <netinet/tcp.h>
#include <poll.h>
#include <sys/epoll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <stdexcept>
#include <string_view>

namespace veltramoor {
namespace {

constexpr int kThreads = 2;
constexpr int kStopCheckMilliseconds = 50;
// A whole answer fits, so that one system call sends it.
constexpr int kSendBuffer = 1 << 20;

void watch(int poller, int socket, unsigned extraEvents = 0) {
  epoll_event event{};
  event.events = EPOLLIN | extraEvents;
  event.data.fd = socket;
  ::epoll_ctl(poller, EPOLL_CTL_ADD, socket, &event);
}

}  // namespace

PageServer::PageServer(const std::string& page)
    : answer_("HTTP/1.1 200 OK\r\nContent-Type: text/html; charset=UTF-8\r\nContent-Length: " +
              std::to_string(page.size()) + "\r\n\r\n" + page) {
  listener_ = ::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0);
  ::setsockopt(listener_, SOL_SOCKET, SO_SNDBUF, &kSendBuffer, sizeof kSendBuffer);
  sockaddr_in address{};
  address.sin_family = AF_INET;
  address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  socklen_t size = sizeof address;
  auto* generic = reinterpret_cast<sockaddr*>(&address);
  if (listener_ < 0 || ::bind(listener_, generic, size) != 0 || ::listen(listener_, 512) != 0 ||
      ::getsockname(listener_, generic, &size) != 0) {
    throw std::runtime_error("no loopback port");
  }
  port_ = ntohs(address.sin_port);
  for (int i = 0; i < kThreads; ++i) {
    pollers_.push_back(::epoll_create1(EPOLL_CLOEXEC));
    watch(pollers_.back(), listener_, EPOLLEXCLUSIVE);
  }
  for (const int poller : pollers_) {
    threads_.emplace_back(&PageServer::serve, this, poller);
  }
}

PageServer::~PageServer() {
  stopping_ = true;
  for (std::thread& thread : threads_) {
    thread.join();
  }
  for (const int poller : pollers_) {
    ::close(poller);
  }
  ::close(listener_);
}

void PageServer::serve(int poller) {
  std::vector<int> connections;
  while (!stopping_) {
    std::array<epoll_event, 64> events;
    const int ready = ::epoll_wait(poller, events.data(), static_cast<int>(events.size()),
                                   kStopCheckMilliseconds);
    for (int i = 0; i < ready; ++i) {
      const int socket = events[static_cast<std::size_t>(i)].data.fd;
      if (socket == listener_) {
        const int accepted = ::accept4(listener_, nullptr, nullptr, SOCK_CLOEXEC | SOCK_NONBLOCK);
        if (accepted >= 0) {
          const int on = 1;
          ::setsockopt(accepted, IPPROTO_TCP, TCP_NODELAY, &on, sizeof on);
          connections.push_back(accepted);
          watch(poller, accepted);
        }
      } else if (!answerRequest(socket)) {
        std::erase(connections, socket);
        ::close(socket);
      }
    }
  }
  for (const int socket : connections) {
    ::close(socket);
  }
}

bool PageServer::answerRequest(int socket) const {
  // Heads are small and come in one piece over loopback.
  std::array<char, 4096> head;
  if (::recv(socket, head.data(), head.size(), 0) <= 0) {
    return false;
  }
  std::string_view rest = answer_;
  while (!rest.empty()) {
    const ssize_t sent = ::send(socket, rest.data(), rest.size(), MSG_NOSIGNAL);
    if (sent >= 0) {
      rest.remove_prefix(static_cast<std::size_t>(sent));
    } else if (errno == EAGAIN) {
      pollfd writable{socket, POLLOUT, 0};
      ::poll(&writable, 1, kStopCheckMilliseconds);
      if (stopping_) {
        return false;
      }
    } else {
      return false;
    }
  }
  return true;
}

}  // namespace veltramoor
