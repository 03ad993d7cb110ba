#include "demo/HttpFront.h"

#include <fcntl.h>
#include <fmt/format.h>
#include <poll.h>
#include <sys/eventfd.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <boost/asio/io_context.hpp>
#include <boost/asio/ip/tcp.hpp>
#include <list>
#include <stdexcept>
#include <string_view>
#include <system_error>
#include <thread>

#include "demo/Connection.h"
#include "demo/Gzip.h"
#include "demo/Wording.h"

namespace veltramoor {
namespace {

namespace asio = boost::asio;
namespace http = boost::beast::http;
using asio::ip::tcp;
using namespace std::chrono_literals;

constexpr std::size_t kWorthCompressing = 512;

/// The library's own view type differs from release to release.
template <typename View>
std::string textOf(const View& view) {
  return {view.data(), view.size()};
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

// As forms write it: "+" for a blank (WHATWG URL, application/x-www-form-urlencoded).
std::string formDecode(std::string_view text) {
  std::string blanks(text);
  std::replace(blanks.begin(), blanks.end(), '+', ' ');
  return percentDecode(blanks);
}

void addParams(std::string_view form, std::multimap<std::string, std::string>& params) {
  while (!form.empty()) {
    const std::string_view pair = form.substr(0, form.find('&'));
    form.remove_prefix(std::min(pair.size() + 1, form.size()));
    const std::size_t equals = std::min(pair.find('='), pair.size());
    if (!pair.empty()) {
      params.emplace(formDecode(pair.substr(0, equals)),
                     formDecode(pair.substr(std::min(equals + 1, pair.size()))));
    }
  }
}

SiteRequest siteRequest(const Connection::Request& request) {
  SiteRequest read;
  read.seen.method = textOf(request.method_string());
  read.seen.target = textOf(request.target());
  read.seen.body = request.body();
  for (const auto& field : request) {
    read.seen.headers.emplace_back(textOf(field.name_string()), textOf(field.value()));
    if (field.name() == http::field::cookie) {
      for (auto& cookie : splitCookies(textOf(field.value()))) {
        read.seen.cookies.push_back(std::move(cookie));
      }
    }
  }
  const std::string_view target = read.seen.target;
  read.path = target.substr(0, target.find_first_of("?#"));
  if (const std::size_t query = target.find('?'); query != std::string_view::npos) {
    addParams(target.substr(query + 1, target.find('#') - query - 1), read.params);
  }
  if (textOf(request[http::field::content_type]).starts_with("application/x-www-form-urlencoded")) {
    addParams(read.seen.body, read.params);
  }
  return read;
}

void sendDrip(Connection& connection, Connection::Response& response) {
  const std::string body = response.body();
  connection.writeHead(response);
  for (std::size_t i = 0; i < body.size(); ++i) {
    if (!connection.writeBytes(std::string_view(body).substr(i, 1)) || !connection.pause(100ms)) {
      return;
    }
  }
  if (response.need_eof()) {
    connection.end();
  }
}

void sendHalf(Connection& connection, Connection::Response& response) {
  const std::string body = response.body();
  // More than there is: an answer without a body, a redirect say, would be whole with its head.
  response.content_length(body.size() + 1);
  connection.writeHead(response);
  connection.writeBytes(std::string_view(body).substr(0, body.size() / 2));
  // Time for the client to read it: a reset throws away what is under way.
  connection.pause(50ms);
  connection.reset();
}

void sendEndlessly(Connection& connection, Connection::Response& response) {
  response.chunked(true);
  connection.writeHead(response);
  while (connection.writeChunk(response.body())) {
  }
}

/// Answers `request`, well or in the way that `answer` says; what does not, ends the connection.
void send(SiteAnswer answer, const Connection::Request& request, Connection& connection) {
  if (answer.delay > 0ms) {
    connection.pause(answer.delay);
  }
  if (answer.delivery == Delivery::Hang) {
    connection.pause(-1ms);
  }
  if (answer.delivery == Delivery::Hang || answer.delivery == Delivery::Close) {
    return connection.end();
  }
  Connection::Response response(static_cast<http::status>(answer.status), request.version());
  response.keep_alive(request.keep_alive());
  response.set(http::field::content_type, answer.contentType);
  for (const auto& [name, value] : answer.headers) {
    response.insert(name, value);
  }
  const std::string encodings = textOf(request[http::field::accept_encoding]);
  if (answer.delivery == Delivery::Whole && answer.compressible &&
      encodings.find("gzip") != std::string::npos && answer.body.size() > kWorthCompressing) {
    response.set(http::field::content_encoding, "gzip");
    response.set(http::field::vary, "Accept-Encoding");
    answer.body = gzip(answer.body);
  }
  response.body() = std::move(answer.body);
  response.prepare_payload();
  if (request.method() == http::verb::head) {
    return connection.write(response, true);
  }
  switch (answer.delivery) {
    case Delivery::Drip:
      return sendDrip(connection, response);
    case Delivery::Reset:
      return sendHalf(connection, response);
    case Delivery::Endless:
      return sendEndlessly(connection, response);
    default:
      return connection.write(response, false);
  }
}

/// What cannot be answered otherwise: no request, or one of a method that the site does not know.
void refuse(http::status status, Connection& connection) {
  Connection::Response response(status, 11);
  response.keep_alive(false);
  response.prepare_payload();
  connection.write(response, false);
}

void serve(Connection& connection, const HttpFront::Handler& handler) {
  while (!connection.ended()) {
    const auto read = connection.read();
    if (const auto* status = std::get_if<http::status>(&read)) {
      refuse(*status, connection);
    } else if (const auto* request = std::get_if<Connection::Request>(&read)) {
      const http::verb method = request->method();
      if (method != http::verb::get && method != http::verb::post && method != http::verb::head) {
        refuse(http::status::method_not_allowed, connection);
        continue;
      }
      try {
        send(handler(siteRequest(*request)), *request, connection);
      } catch (const std::exception&) {  // An address too long to be sent back, say.
        refuse(http::status::internal_server_error, connection);
      }
    }
  }
}

}  // namespace

std::string SiteRequest::param(const std::string& name) const {
  const auto found = params.find(name);
  return found == params.end() ? std::string() : found->second;
}

class HttpFront::Server {
 public:
  Server(int port, HttpFront::Handler handler) : handler_(std::move(handler)) {
    try {
      const tcp::endpoint endpoint(asio::ip::address_v4::loopback(),
                                   static_cast<std::uint16_t>(port));
      // With SO_REUSEADDR (the constructor sets it) and without SO_REUSEPORT: two sites must not
      // share one port unnoticed.
      acceptor_ = tcp::acceptor(context_, endpoint);
      acceptor_.non_blocking(true);  // A client may have gone between the wait and the accepting.
    } catch (const boost::system::system_error&) {
      throw std::runtime_error(fmt::format("cannot listen on 127.0.0.1:{}", port));
    }
    ::fcntl(acceptor_.native_handle(), F_SETFD, FD_CLOEXEC);
    port_ = acceptor_.local_endpoint().port();
    accepting_ = std::jthread([this] { accept(); });
  }
  ~Server() {
    ::eventfd_write(stop_, 1);
    accepting_.join();
    open_.endAll();
    workers_.clear();
    ::close(stop_);
  }
  Server(const Server&) = delete;
  Server& operator=(const Server&) = delete;

  [[nodiscard]] int port() const { return port_; }

 private:
  // A pool would be held up by a few clients that keep their connections.
  struct Worker {
    std::atomic<bool> done = false;
    std::jthread thread;  // last: joined before `done` goes
  };

  void accept() {
    std::array<pollfd, 2> waited{{{acceptor_.native_handle(), POLLIN, 0}, {stop_, POLLIN, 0}}};
    while (waited[1].revents == 0) {
      if (::poll(waited.data(), waited.size(), -1) < 1 || waited[0].revents == 0) {
        continue;
      }
      boost::system::error_code error;
      tcp::socket socket = acceptor_.accept(error);
      workers_.remove_if([](const Worker& worker) { return worker.done.load(); });
      if (error || !startWorker(std::move(socket))) {
        std::this_thread::sleep_for(1ms);  // Too many open files or threads, say: that passes.
      }
    }
  }

  bool startWorker(tcp::socket socket) {
    Worker& worker = workers_.emplace_back();
    try {
      worker.thread = std::jthread([this, &worker, socket = std::move(socket)]() mutable {
        {
          Connection connection(std::move(socket), open_);
          serve(connection, handler_);
        }
        worker.done = true;
      });
    } catch (const std::system_error&) {
      workers_.pop_back();
      return false;
    }
    return true;
  }

  HttpFront::Handler handler_;
  asio::io_context context_;
  tcp::acceptor acceptor_{context_};
  int port_ = 0;
  int stop_ = ::eventfd(0, EFD_CLOEXEC);
  OpenSockets open_;
  std::list<Worker> workers_;
  std::jthread accepting_;
};

HttpFront::HttpFront(int port, Handler handler)
    : server_(std::make_unique<Server>(port, std::move(handler))) {}
HttpFront::~HttpFront() = default;
int HttpFront::port() const { return server_->port(); }

}  // namespace veltramoor
