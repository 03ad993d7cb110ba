// One client of the demo site's server.
#pragma once

#include <boost/asio/ip/tcp.hpp>
#include <boost/beast/core/flat_buffer.hpp>
#include <boost/beast/http/message.hpp>
#include <boost/beast/http/string_body.hpp>
#include <chrono>
#include <mutex>
#include <set>
#include <string_view>
#include <variant>

namespace veltramoor {

/// The sockets that are open, so that stopping can end them all. Thread-safe.
class OpenSockets {
 public:
  /// Shuts `socket` down at once when `endAll` was called already.
  void add(int socket);
  /// Before it is closed: its number may be another socket's afterwards.
  void remove(int socket);
  /// Wakes every thread that waits for one of the sockets, and all that come later.
  void endAll();

 private:
  std::mutex mutex_;
  std::set<int> sockets_;
  bool ended_ = false;
};

/// Reads and writes block until the client, or `OpenSockets::endAll`, ends the connection.
class Connection {
 public:
  using Request = boost::beast::http::request<boost::beast::http::string_body>;
  using Response = boost::beast::http::response<boost::beast::http::string_body>;
  /// The connection ended, or had ended before, and there is nobody to answer.
  struct Gone {};

  Connection(boost::asio::ip::tcp::socket socket, OpenSockets& sockets);
  ~Connection();
  Connection(const Connection&) = delete;
  Connection& operator=(const Connection&) = delete;

  /// The next request; or, of what is no request, the status that says what is wrong with it.
  [[nodiscard]] std::variant<Request, boost::beast::http::status, Gone> read();

  /// Head and body; of the answer to a HEAD request the head alone. Ends the connection after an
  /// answer that does not keep it.
  void write(Response& response, bool headOnly);
  /// The head, whatever its body is; `writeBytes` and `writeChunk` are to send that.
  void writeHead(Response& response);
  /// False when the client has gone.
  bool writeBytes(std::string_view bytes);
  /// One piece of a body in chunks (RFC 9112 section 7.1); false when the client has gone.
  bool writeChunk(std::string_view bytes);

  /// True after `time` (negative: never); false as soon as the client has gone.
  bool pause(std::chrono::milliseconds time);
  /// Nothing more is read or sent.
  void end() { ended_ = true; }
  /// The same, and closing answers with a TCP reset.
  void reset();
  [[nodiscard]] bool ended() const { return ended_; }

 private:
  /// Ends the connection when `error` is one; false then.
  bool goesOn(const boost::system::error_code& error);

  boost::asio::ip::tcp::socket socket_;
  OpenSockets& sockets_;
  boost::beast::flat_buffer buffer_;
  bool ended_ = false;
};

}  // namespace veltramoor
