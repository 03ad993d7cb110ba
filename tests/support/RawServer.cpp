#include "support/RawServer.h"

#include <arpa/inet.h>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <poll.h>
#include <strings.h>
#include <sys/eventfd.h>
#include <sys/socket.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdint>
#include <cstdlib>
#include <stdexcept>
#include <utility>

namespace veltramoor::test {
namespace {

constexpr std::string_view kHeadEnd = "\r\n\r\n";
// How long a body gets to show bytes past its stated length.
constexpr int kSpareBytesWait = 20;

class Socket {
 public:
  explicit Socket(int handle) : handle_(handle) {}
  ~Socket() { ::close(handle_); }
  Socket(const Socket&) = delete;
  Socket& operator=(const Socket&) = delete;
  [[nodiscard]] int handle() const { return handle_; }

 private:
  int handle_;
};

}  // namespace

std::vector<std::string> RecordedRequest::headerLines() const {
  std::vector<std::string> lines;
  std::size_t begin = head.find("\r\n") + 2;
  for (std::size_t end = head.find("\r\n", begin); end > begin && end != std::string::npos;
       begin = end + 2, end = head.find("\r\n", begin)) {
    lines.push_back(head.substr(begin, end - begin));
  }
  return lines;
}

std::optional<std::string> RecordedRequest::header(std::string_view name) const {
  for (const std::string& line : headerLines()) {
    if (line.size() > name.size() && line[name.size()] == ':' &&
        strncasecmp(line.data(), name.data(), name.size()) == 0) {
      const std::size_t value = line.find_first_not_of(' ', name.size() + 1);
      return value == std::string::npos ? std::string() : line.substr(value);
    }
  }
  return std::nullopt;
}

RawReply RawReply::close(std::string sent) { return {std::move(sent), Then::kClose}; }
RawReply RawReply::reset(std::string sent) { return {std::move(sent), Then::kReset}; }
RawReply RawReply::hang(std::string sent) { return {std::move(sent), Then::kHang}; }
RawReply RawReply::dripping(std::string sent, std::chrono::milliseconds pause) {
  RawReply reply(std::move(sent));
  reply.drip = pause;
  return reply;
}
RawReply RawReply::endless(std::string sent, std::string repeatedBytes) {
  RawReply reply(std::move(sent), Then::kRepeatForever);
  reply.repeated = std::move(repeatedBytes);
  return reply;
}

RawServer::RawServer(Handler handler, std::string greeting)
    : handler_(std::move(handler)), greeting_(std::move(greeting)) {
  listener_ = ::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
  stopEvent_ = ::eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK);
  sockaddr_in address{};
  address.sin_family = AF_INET;
  address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  socklen_t size = sizeof address;
  auto* generic = reinterpret_cast<sockaddr*>(&address);
  if (listener_ < 0 || stopEvent_ < 0 || ::bind(listener_, generic, size) != 0 ||
      ::listen(listener_, 128) != 0 || ::getsockname(listener_, generic, &size) != 0) {
    throw std::runtime_error("no loopback port for the test server");
  }
  port_ = ntohs(address.sin_port);
  acceptor_ = std::thread(&RawServer::acceptLoop, this);
}

RawServer::~RawServer() {
  stop();
  ::close(stopEvent_);
}

void RawServer::stop() {
  const std::uint64_t one = 1;
  // Never read again, so the event stays set for every thread that polls it.
  if (::write(stopEvent_, &one, sizeof one) != sizeof one) {
    std::abort();
  }
  if (!acceptor_.joinable()) {
    return;
  }
  acceptor_.join();
  ::close(listener_);
  for (std::thread& worker : workers_) {
    worker.join();
  }
  workers_.clear();
}

std::string RawServer::hostAndPort() const { return "127.0.0.1:" + std::to_string(port_); }

std::string RawServer::url(std::string_view path) const {
  return "http://" + hostAndPort() + std::string(path);
}

std::vector<RecordedRequest> RawServer::requests() const {
  const std::scoped_lock lock(mutex_);
  return requests_;
}

std::size_t RawServer::hits() const {
  const std::scoped_lock lock(mutex_);
  return requests_.size();
}

std::size_t RawServer::hits(std::string_view target) const {
  const std::scoped_lock lock(mutex_);
  return static_cast<std::size_t>(std::count_if(requests_.begin(), requests_.end(),
                                                [&](const auto& r) { return r.target == target; }));
}

int RawServer::connections() const { return connections_; }

bool RawServer::waitForHits(std::size_t count) const {
  std::unique_lock lock(mutex_);
  return arrived_.wait_for(lock, std::chrono::seconds(10),
                           [&] { return requests_.size() >= count; });
}

std::string RawServer::response(int status, std::string_view body,
                                const std::vector<std::string>& headerLines) {
  std::string text = "HTTP/1.1 " + std::to_string(status) + " Scripted\r\n";
  for (const std::string& line : headerLines) {
    text += line + "\r\n";
  }
  if (status != 204 && status != 304) {
    text += "Content-Length: " + std::to_string(body.size()) + "\r\n";
  }
  text += "\r\n";
  return text.append(body);
}

void RawServer::acceptLoop() {
  while (waitFor(listener_, POLLIN)) {
    const int socket = ::accept4(listener_, nullptr, nullptr, SOCK_CLOEXEC | SOCK_NONBLOCK);
    if (socket >= 0) {
      const int connection = connections_++;
      workers_.emplace_back(&RawServer::serve, this, socket, connection);
    }
  }
}

void RawServer::serve(int handle, int connection) {
  const Socket socket(handle);
  const int on = 1;
  ::setsockopt(handle, IPPROTO_TCP, TCP_NODELAY, &on, sizeof on);
  std::string buffer;
  if (!sendAll(handle, greeting_)) {
    return;
  }
  for (;;) {
    std::size_t headEnd = std::string::npos;
    while ((headEnd = buffer.find(kHeadEnd)) == std::string::npos) {
      if (!waitFor(handle, POLLIN) || !receive(handle, buffer)) {
        return;
      }
    }
    RecordedRequest request;
    request.connection = connection;
    request.head = buffer.substr(0, headEnd + kHeadEnd.size());
    request.body = buffer.substr(request.head.size());
    buffer.clear();
    const std::size_t first = request.head.find(' ');
    request.method = request.head.substr(0, first);
    request.target = request.head.substr(first + 1, request.head.find(' ', first + 1) - first - 1);
    if (const auto stated = request.header("Content-Length")) {
      const std::size_t length = std::strtoul(stated->c_str(), nullptr, 10);
      while (request.body.size() < length) {
        if (!waitFor(handle, POLLIN) || !receive(handle, request.body)) {
          return;
        }
      }
      // Nobody pipelines, so whatever comes before the answer belongs to this request.
      while (waitFor(handle, POLLIN, kSpareBytesWait) && receive(handle, request.body)) {
      }
    }
    {
      const std::scoped_lock lock(mutex_);
      requests_.push_back(request);
    }
    arrived_.notify_all();
    if (!answer(handle, handler_(request))) {
      return;
    }
  }
}

bool RawServer::answer(int socket, const RawReply& reply) {
  bool sent = true;
  if (reply.drip.count() > 0) {
    for (std::size_t i = 0; sent && i < reply.bytes.size(); ++i) {
      sent = sendAll(socket, std::string_view(reply.bytes).substr(i, 1));
      pollfd stopping{stopEvent_, POLLIN, 0};
      sent = sent && ::poll(&stopping, 1, static_cast<int>(reply.drip.count())) == 0;
    }
  } else {
    sent = sendAll(socket, reply.bytes);
  }
  std::string ignored;
  switch (reply.then) {
    case RawReply::Then::kKeepOpen:
      return sent;
    case RawReply::Then::kClose:
      return false;
    case RawReply::Then::kReset: {
      const linger abort{1, 0};
      ::setsockopt(socket, SOL_SOCKET, SO_LINGER, &abort, sizeof abort);
      return false;
    }
    case RawReply::Then::kHang:
      while (sent && waitFor(socket, POLLIN) && receive(socket, ignored)) {
      }
      return false;
    case RawReply::Then::kRepeatForever:
      while (sent && sendAll(socket, reply.repeated)) {
      }
      return false;
  }
  return false;
}

bool RawServer::waitFor(int socket, short events, int waitMilliseconds) const {
  std::array<pollfd, 2> polled{pollfd{stopEvent_, POLLIN, 0}, pollfd{socket, events, 0}};
  while (::poll(polled.data(), polled.size(), waitMilliseconds) < 0) {
  }
  return polled[0].revents == 0 && polled[1].revents != 0;
}

bool RawServer::sendAll(int socket, std::string_view bytes) const {
  while (!bytes.empty()) {
    const ssize_t sent = ::send(socket, bytes.data(), bytes.size(), MSG_NOSIGNAL);
    if (sent >= 0) {
      bytes.remove_prefix(static_cast<std::size_t>(sent));
    } else if (errno != EAGAIN || !waitFor(socket, POLLOUT)) {
      return false;
    }
    pollfd stopping{stopEvent_, POLLIN, 0};
    if (::poll(&stopping, 1, 0) != 0) {
      return false;
    }
  }
  return true;
}

bool RawServer::receive(int socket, std::string& buffer) const {
  std::array<char, 65536> chunk;  // NOLINT(cppcoreguidelines-pro-type-member-init)
  const ssize_t got = ::recv(socket, chunk.data(), chunk.size(), 0);
  if (got > 0) {
    buffer.append(chunk.data(), static_cast<std::size_t>(got));
  }
  return got > 0 || (got < 0 && errno == EAGAIN);
}

}  // namespace veltramoor::test
