#include "demo/Connection.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/socket.h>

#include <boost/asio/buffer.hpp>
#include <boost/asio/write.hpp>
#include <boost/beast/http/chunk_encode.hpp>
#include <boost/beast/http/empty_body.hpp>
#include <boost/beast/http/parser.hpp>
#include <boost/beast/http/read.hpp>
#include <boost/beast/http/serializer.hpp>
#include <boost/beast/http/write.hpp>
#include <cerrno>
#include <cstdint>
#include <stdexcept>

namespace veltramoor {
namespace {

namespace asio = boost::asio;
namespace http = boost::beast::http;

// Far more than a client of ours sends, and little enough for a machine that runs many tests.
constexpr std::uint32_t kLargestHead = 1U << 20U;
constexpr std::uint64_t kLargestBody = std::uint64_t{64} << 20U;

// Newer releases of the library have errors of their own for a field of more than 64 KB.
template <typename Error>
bool isOfALargeField([[maybe_unused]] const boost::system::error_code& error) {
  if constexpr (requires { Error::header_field_value_too_large; }) {
    return error == Error::header_field_name_too_large ||
           error == Error::header_field_value_too_large;
  }
  return false;
}

http::status statusFor(const boost::system::error_code& error) {
  if (error == http::error::header_limit || error == http::error::buffer_overflow ||
      isOfALargeField<http::error>(error)) {
    return http::status::request_header_fields_too_large;
  }
  return error == http::error::body_limit ? http::status::payload_too_large
                                          : http::status::bad_request;
}

bool isOfTheParser(const boost::system::error_code& error) {
  return error.category() == http::make_error_code(http::error::bad_method).category() &&
         error != http::error::end_of_stream && error != http::error::partial_message;
}

}  // namespace

void OpenSockets::add(int socket) {
  const std::lock_guard lock(mutex_);
  sockets_.insert(socket);
  if (ended_) {
    ::shutdown(socket, SHUT_RDWR);
  }
}

void OpenSockets::remove(int socket) {
  const std::lock_guard lock(mutex_);
  sockets_.erase(socket);
}

void OpenSockets::endAll() {
  const std::lock_guard lock(mutex_);
  ended_ = true;
  for (const int socket : sockets_) {
    ::shutdown(socket, SHUT_RDWR);
  }
}

Connection::Connection(asio::ip::tcp::socket socket, OpenSockets& sockets)
    : socket_(std::move(socket)), sockets_(sockets) {
  // Not for the programs that a test starts: what they hold open would not end here.
  ::fcntl(socket_.native_handle(), F_SETFD, FD_CLOEXEC);
  boost::system::error_code ignored;
  socket_.set_option(asio::ip::tcp::no_delay(true), ignored);
  sockets_.add(socket_.native_handle());
}

Connection::~Connection() {
  sockets_.remove(socket_.native_handle());
  boost::system::error_code ignored;
  socket_.close(ignored);  // Its destructor would take a reset back, which might wait.
}

bool Connection::goesOn(const boost::system::error_code& error) {
  ended_ = ended_ || error.failed();
  return !ended_;
}

std::variant<Connection::Request, http::status, Connection::Gone> Connection::read() try {
  http::request_parser<http::string_body> parser;
  parser.header_limit(kLargestHead);
  parser.body_limit(kLargestBody);
  boost::system::error_code error;
  http::read_header(socket_, buffer_, parser, error);
  if (!error && parser.get()[http::field::expect] == "100-continue") {
    http::response<http::empty_body> goOn{http::status::continue_, parser.get().version()};
    http::write(socket_, goOn, error);
  }
  if (!error) {
    http::read(socket_, buffer_, parser, error);
  }
  if (goesOn(error)) {
    return parser.release();
  }
  if (isOfTheParser(error)) {
    ended_ = false;
    return statusFor(error);
  }
  return Gone{};
} catch (const std::length_error&) {
  // What older releases of the library say of such a field.
  return http::status::request_header_fields_too_large;
}

void Connection::write(Response& response, bool headOnly) {
  if (headOnly) {
    writeHead(response);
  } else {
    boost::system::error_code error;
    http::write(socket_, response, error);
    goesOn(error);
  }
  ended_ = ended_ || response.need_eof();
}

void Connection::writeHead(Response& response) {
  http::response_serializer<http::string_body> serializer(response);
  boost::system::error_code error;
  http::write_header(socket_, serializer, error);
  goesOn(error);
}

bool Connection::writeBytes(std::string_view bytes) {
  boost::system::error_code error;
  asio::write(socket_, asio::buffer(bytes), error);
  return goesOn(error);
}

bool Connection::writeChunk(std::string_view bytes) {
  boost::system::error_code error;
  asio::write(socket_, http::make_chunk(asio::buffer(bytes)), error);
  return goesOn(error);
}

bool Connection::pause(std::chrono::milliseconds time) {
  pollfd waited{socket_.native_handle(), POLLRDHUP, 0};
  int count = 0;
  // A signal starts the wait anew.
  while (!ended_ && (count = ::poll(&waited, 1, static_cast<int>(time.count()))) < 0 &&
         errno == EINTR) {
  }
  ended_ = ended_ || count != 0;
  return !ended_;
}

void Connection::reset() {
  boost::system::error_code ignored;
  socket_.set_option(asio::socket_base::linger(true, 0), ignored);
  ended_ = true;
}

}  // namespace veltramoor
