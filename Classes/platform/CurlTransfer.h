// One exchange with one server, without redirects.
#pragma once

#include <atomic>
#include <chrono>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>

#include "platform/UrlLoading.h"

namespace veltramoor {

struct TransferLimits {
  /// Longest time without a byte moving, and longest time to connect.
  std::chrono::milliseconds idle;
  std::chrono::steady_clock::time_point deadline;
  std::size_t maximumBodySize;
  std::size_t maximumHeaderSize;
};

struct TransferAnswer {
  int statusCode = 0;
  HeaderList headers;
  std::string body;
  /// The absolute URL that a redirect's Location leads to, unescaped.
  std::optional<std::string> redirectTarget;
};

/// How a transfer ended: exactly one of the two is present.
struct TransferOutcome {
  std::optional<TransferAnswer> answer = std::nullopt;
  std::optional<TransferFailure> failure = std::nullopt;
  /// Head and body as they came over the network, before content decoding.
  std::uint64_t bytesReceived = 0;
};

/// A libcurl handle with connections of its own, which are kept from one `perform` to the next.
/// One thread at a time, `wakeUp` excepted.
class CurlTransfer {
 public:
  explicit CurlTransfer(CookieStorage& cookies);
  ~CurlTransfer();
  CurlTransfer(const CurlTransfer&) = delete;
  CurlTransfer& operator=(const CurlTransfer&) = delete;

  /// Blocks until the answer is complete or the transfer has failed; given up when `abandoned`
  /// becomes true, and when the request's stop is asked for (both are looked at after each
  /// `wakeUp`). The request's header fields must have been checked.
  [[nodiscard]] TransferOutcome perform(const UrlRequest& request, const TransferLimits& limits,
                                        const std::atomic<bool>& abandoned);
  /// Any thread.
  void wakeUp();

 private:
  class Impl;
  std::unique_ptr<Impl> impl_;
};

}  // namespace veltramoor
