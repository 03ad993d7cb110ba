// Blocking HTTP exchanges over libcurl.
#pragma once

#include <chrono>
#include <cstddef>
#include <functional>
#include <memory>
#include <optional>
#include <stop_token>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "platform/TransferFailure.h"
#include "platform/Url.h"

namespace veltramoor {

class CookieStorage;
struct ExchangeRecord;

/// Told of each exchange; see ExchangeLog.h.
using ExchangeLog = std::function<void(const ExchangeRecord&)>;

/// Header fields in the order they stand on the wire; a name may come twice.
using HeaderList = std::vector<std::pair<std::string, std::string>>;

/// How far a request that was asked to tell has come.
struct ConnectionStage {
  enum class Reached {
    /// The name of the host led to `peerAddress`; an address in its place leads to itself.
    Address,
    /// `peerAddress` took the connection; `localAddress` is who this computer is to it.
    Connection,
  };
  Reached reached = Reached::Address;
  /// IP addresses, IPv6 ones without brackets.
  std::string peerAddress;
  std::string localAddress = {};
};

/// One exchange to perform. Headers go out as they stand, in this order; "Cookie",
/// "Accept-Encoding" and, where the list has none, "Accept" are added by the transport, and so is
/// "Host", which is always the URL's: one in the list is left out. When a body is present and the
/// list states no "Content-Length", the body's length in bytes is stated.
struct UrlRequest {
  Url url;
  std::string method = "GET";
  HeaderList headers = {};
  std::optional<std::string> body = std::nullopt;
  /// Longest time without a byte moving in either direction; absent: the system's default (60 s).
  std::optional<std::chrono::milliseconds> timeoutInterval = std::nullopt;
  /// The request has an effect at the server although it has no body (requests with one are safe
  /// anyway): it is never sent again when a kept connection turns out to be dead.
  bool sendOnce = false;
  /// A requested stop fails the exchange at once, whatever its server does.
  std::stop_token stop = {};
  /// The exchange, redirects included, has failed when it is not over by then.
  std::optional<std::chrono::steady_clock::time_point> deadline = std::nullopt;
  /// False: a redirect is a final answer like any other.
  bool followsRedirects = true;
  /// Called on the sending thread as each stage is reached, on a connection made for this request;
  /// must not throw. Empty: nobody asks.
  std::function<void(const ConnectionStage&)> progress = {};
};

struct UrlResponse {
  int statusCode = 0;
  /// Header fields of the final response.
  HeaderList headers;
  /// Where redirects ended, and the method of the request that got there.
  Url url;
  std::string method;

  /// First value of a field, name compared without case (RFC 9110 section 5.1).
  [[nodiscard]] std::optional<std::string> header(std::string_view name) const;
};

/// Either both response and data are present or, on any transport failure, the failure is.
struct UrlResult {
  std::optional<UrlResponse> response = std::nullopt;
  /// Body after content decoding; empty, not absent, for an answer without one.
  std::optional<std::string> data = std::nullopt;
  std::optional<TransferFailure> failure = std::nullopt;
};

struct UrlLoadingLimits {
  std::chrono::milliseconds timeoutInterval{60'000};
  /// The whole exchange, redirects included, never lasts longer than this many idle timeouts.
  int hardCapFactor = 3;
  /// Largest body after decoding; a longer one is a failed transfer.
  std::size_t maximumBodySize = std::size_t{16} * 1024 * 1024;
  /// Largest sum of header bytes of one response; a longer head is a failed transfer.
  std::size_t maximumHeaderSize = std::size_t{256} * 1024;
  int maximumRedirects = 20;
};

/// The process's HTTP client. Thread-safe: any number of threads may `send` at once; connections
/// are pooled for the life of the object.
class UrlLoading {
 public:
  explicit UrlLoading(CookieStorage& cookies, UrlLoadingLimits limits = {});
  ~UrlLoading();
  UrlLoading(const UrlLoading&) = delete;
  UrlLoading& operator=(const UrlLoading&) = delete;

  /// The client on `CookieStorage::sharedInstance()`.
  static UrlLoading& sharedInstance();

  /// Performs the exchange and follows redirects; blocks until it is over. Never throws for what a
  /// network or a server does: every failure, and a header with CR, LF or NUL in it, is a
  /// result with its failure. Credentials, cookies and session headers never follow to another
  /// origin.
  [[nodiscard]] UrlResult send(const UrlRequest& request);

  /// Makes running and later exchanges fail at once: for an application that is closing while a
  /// server hangs.
  void abandonAll();
  /// Lets exchanges be made again: for a process that starts the application a second time.
  void resume();

  /// Has `log` called once at the end of each exchange with one server, each redirect that was
  /// followed being one of its own; an empty one (as at first) ends that. Called on the thread that
  /// sends, on several at once; must not throw. Exchanges under way may still call the one before.
  void setExchangeLog(ExchangeLog log);

 private:
  class Impl;
  std::unique_ptr<Impl> impl_;
};

}  // namespace veltramoor
