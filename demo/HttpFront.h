// The demo site's HTTP server: requests in, answers out, and the ways an answer can fail.
#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "demo/DemoSite.h"

namespace veltramoor {

struct SiteRequest {
  DemoRequest seen;
  /// The target without its query, not decoded.
  std::string path;
  /// Of the query and of a form body, decoded; the first of a name stands first.
  std::multimap<std::string, std::string> params;

  /// The first parameter `name`, or "".
  [[nodiscard]] std::string param(const std::string& name) const;
};

enum class Delivery : std::uint8_t { Whole, Hang, Close, Reset, Endless, Drip };

struct SiteAnswer {
  int status = 200;
  std::string contentType = "text/html; charset=utf-8";
  std::vector<std::pair<std::string, std::string>> headers;
  /// Endless delivery repeats it.
  std::string body;
  /// Whether the front may compress the body for a client that takes gzip.
  bool compressible = true;
  Delivery delivery = Delivery::Whole;
  std::chrono::milliseconds delay{0};
};

/// Listens on 127.0.0.1 until destroyed, one thread for each connection.
class HttpFront {
 public:
  /// Called from connection threads, several at once.
  using Handler = std::function<SiteAnswer(const SiteRequest&)>;

  /// `port` 0 takes a free one. Throws std::runtime_error when the port cannot be bound.
  HttpFront(int port, Handler handler);
  ~HttpFront();
  HttpFront(const HttpFront&) = delete;
  HttpFront& operator=(const HttpFront&) = delete;

  [[nodiscard]] int port() const;

 private:
  class Server;
  std::unique_ptr<Server> server_;
};

}  // namespace veltramoor
