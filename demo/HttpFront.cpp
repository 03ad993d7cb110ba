#include "demo/HttpFront.h"

#include <fcntl.h>
#include <fmt/format.h>
#include <netinet/in.h>
#include <sys/socket.h>

#include <algorithm>
#include <atomic>
#include <list>
#include <optional>
#include <stdexcept>
#include <thread>

#include "demo/Connection.h"
#include "demo/Gzip.h"

namespace veltramoor {
namespace {

using namespace std::chrono_literals;

/// A pool would be held up by a few clients that keep their connections.
class ThreadPerConnection final : public httplib::TaskQueue {
 public:
  void enqueue(std::function<void()> task) override {
    threads_.remove_if([](const Worker& worker) { return worker.done.load(); });
    Worker& worker = threads_.emplace_back();
    worker.thread = std::jthread([task = std::move(task), &worker] {
      task();
      worker.done = true;
    });
  }
  void shutdown() override { threads_.clear(); }

 private:
  struct Worker {
    std::atomic<bool> done = false;
    std::jthread thread;  // last: joined before `done` goes
  };
  std::list<Worker> threads_;
};

/// What the library's handlers are not told about the request that they are called for.
struct Exchange {
  Connection* connection = nullptr;
  /// As the client sent it; the library would compress on its own, with a slower method.
  std::optional<std::string> acceptEncoding;
  /// The library waits for the end of the connection when a POST has no length; it gets one.
  bool lengthAdded = false;
};
thread_local Exchange exchange;

void prepare(httplib::Request& request) {
  exchange.acceptEncoding.reset();
  if (request.has_header("Accept-Encoding")) {
    exchange.acceptEncoding = request.get_header_value("Accept-Encoding");
    request.headers.erase("Accept-Encoding");
  }
  exchange.lengthAdded = request.method == "POST" && !request.has_header("Content-Length") &&
                         !request.has_header("Transfer-Encoding");
  if (exchange.lengthAdded) {
    request.set_header("Content-Length", "0");
  }
}

std::vector<std::pair<std::string, std::string>> splitCookies(const std::string& line) {
  std::vector<std::pair<std::string, std::string>> cookies;
  std::size_t start = 0;
  while (start < line.size()) {
    const std::size_t end = std::min(line.find(';', start), line.size());
    const std::string pair = line.substr(start, end - start);
    const std::size_t begin = std::min(pair.find_first_not_of(' '), pair.size());
    const std::size_t equals = pair.find('=');
    if (equals != std::string::npos && equals >= begin) {
      cookies.emplace_back(pair.substr(begin, equals - begin), pair.substr(equals + 1));
    }
    start = end + 1;
  }
  return cookies;
}

SiteRequest readRequest(const httplib::Request& request) {
  SiteRequest read;
  read.seen.method = request.method;
  read.seen.target = request.target;
  read.seen.body = request.body;
  for (const auto& [name, value] : request.headers) {
    const bool own = name == "REMOTE_ADDR" || name == "REMOTE_PORT" || name == "LOCAL_ADDR" ||
                     name == "LOCAL_PORT" || (exchange.lengthAdded && name == "Content-Length");
    if (!own) {
      read.seen.headers.emplace_back(name, value);
    }
  }
  if (exchange.acceptEncoding) {
    read.seen.headers.emplace_back("Accept-Encoding", *exchange.acceptEncoding);
  }
  const auto [first, last] = request.headers.equal_range("Cookie");
  for (auto line = first; line != last; ++line) {
    for (auto& cookie : splitCookies(line->second)) {
      read.seen.cookies.push_back(std::move(cookie));
    }
  }
  read.path = request.target.substr(0, request.target.find_first_of("?#"));
  read.params = request.params;
  return read;
}

void sendDrip(httplib::Response& response, std::string body, const std::string& type) {
  const std::size_t size = body.size();
  response.set_content_provider(
      size, type,
      [body = std::move(body)](std::size_t offset, std::size_t, httplib::DataSink& sink) {
        return sink.write(body.data() + offset, 1) && exchange.connection->pause(100ms);
      });
}

void sendHalf(httplib::Response& response, std::string body, const std::string& type) {
  const std::size_t size = body.size();
  response.set_content_provider(
      size, type, [body = std::move(body)](std::size_t, std::size_t, httplib::DataSink& sink) {
        sink.write(body.data(), body.size() / 2);
        // Time for the client to read it: a reset throws away what is under way.
        exchange.connection->pause(50ms);
        exchange.connection->reset();
        return false;
      });
}

void sendEndlessly(httplib::Response& response, std::string body, const std::string& type) {
  response.set_chunked_content_provider(
      type, [body = std::move(body)](std::size_t, httplib::DataSink& sink) {
        return sink.write(body.data(), body.size());
      });
}

void send(SiteAnswer answer, httplib::Response& response) {
  Connection& connection = *exchange.connection;
  if (answer.delay > 0ms) {
    connection.pause(answer.delay);
  }
  if (answer.delivery == Delivery::Hang) {
    connection.pause(-1ms);
    connection.end();
  } else if (answer.delivery == Delivery::Close) {
    connection.end();
  }
  response.status = answer.status;
  for (const auto& [name, value] : answer.headers) {
    response.headers.emplace(name, value);
  }
  switch (answer.delivery) {
    case Delivery::Drip:
      return sendDrip(response, std::move(answer.body), answer.contentType);
    case Delivery::Reset:
      return sendHalf(response, std::move(answer.body), answer.contentType);
    case Delivery::Endless:
      return sendEndlessly(response, std::move(answer.body), answer.contentType);
    default:
      break;
  }
  const bool takesGzip = exchange.acceptEncoding.value_or("").find("gzip") != std::string::npos;
  if (answer.compressible && takesGzip && answer.body.size() > 512) {
    response.set_header("Content-Encoding", "gzip");
    response.set_header("Vary", "Accept-Encoding");
    answer.body = gzip(answer.body);
  }
  response.set_content(answer.body, answer.contentType);
}

}  // namespace

std::string SiteRequest::param(const std::string& name) const {
  const auto found = params.find(name);
  return found == params.end() ? std::string() : found->second;
}

class HttpFront::Server final : public httplib::Server {
 public:
  Server(int port, HttpFront::Handler handler) : handler_(std::move(handler)) {
    new_task_queue = [] { return std::make_unique<ThreadPerConnection>().release(); };
    // Not the library's own options: with SO_REUSEPORT two sites could share one port unnoticed.
    set_socket_options([](socket_t socket) {
      const int yes = 1;
      ::setsockopt(socket, SOL_SOCKET, SO_REUSEADDR, &yes, sizeof yes);
      ::fcntl(socket, F_SETFD, FD_CLOEXEC);
    });
    set_tcp_nodelay(true);
    set_keep_alive_max_count(100'000);
    set_keep_alive_timeout(60);
    const auto answer = [this](const httplib::Request& request, httplib::Response& response) {
      send(handler_(readRequest(request)), response);
    };
    Get(".*", answer);
    Post(".*", answer);
    const bool bound = port == 0 ? (port_ = bind_to_any_port("127.0.0.1")) > 0
                                 : bind_to_port("127.0.0.1", port_ = port);
    if (!bound) {
      throw std::runtime_error(fmt::format("cannot listen on 127.0.0.1:{}", port));
    }
    // The library allows five clients to wait, too few for many that come at once.
    ::listen(svr_sock_, SOMAXCONN);
    thread_ = std::jthread([this] { listen_after_bind(); });
    // Stopping before the loop runs would be forgotten.
    while (!is_running()) {
      std::this_thread::sleep_for(1ms);
    }
  }
  ~Server() override {
    sockets_.endAll();
    stop();
    thread_.join();
  }

  [[nodiscard]] int port() const { return port_; }

 private:
  bool process_and_close_socket(socket_t socket) override {
    Connection connection(socket, sockets_);
    exchange.connection = &connection;
    bool closed = false;
    while (!closed && !connection.ended()) {
      if (!process_request(connection, false, closed, prepare)) {
        break;
      }
    }
    exchange.connection = nullptr;
    return true;
  }

  HttpFront::Handler handler_;
  OpenSockets sockets_;
  int port_ = 0;
  std::jthread thread_;
};

HttpFront::HttpFront(int port, Handler handler)
    : server_(std::make_unique<Server>(port, std::move(handler))) {}
HttpFront::~HttpFront() = default;
int HttpFront::port() const { return server_->port(); }

}  // namespace veltramoor
