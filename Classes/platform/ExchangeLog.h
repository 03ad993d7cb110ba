// What is told of an exchange to whoever asked to listen.
#pragma once

#include <chrono>
#include <cstdint>
#include <optional>
#include <string>

#include "platform/TransferFailure.h"
#include "platform/Url.h"

namespace veltramoor {

/// One request and its answer; each redirect that was followed is one more. Holds no header, no
/// cookie and no body.
struct ExchangeRecord {
  std::string method = {};
  /// As `addressForLog` writes it.
  std::string address = {};
  /// Exactly one of the two is present.
  std::optional<int> statusCode = std::nullopt;
  std::optional<TransferFailure> failure = std::nullopt;
  /// Head and body as they came over the network, before content decoding.
  std::uint64_t bytesReceived = 0;
  std::chrono::milliseconds duration{0};
};

/// The URL without credentials and fragment, and with "..." for the value of each query item named
/// "token" (any case), which lets its holder command the remote client.
[[nodiscard]] std::string addressForLog(const Url& url);

/// "GET http://index.example/recent 200, 5321 bytes, 12 ms", or the failure's name and words for
/// the status. One printable line without its end.
[[nodiscard]] std::string lineOf(const ExchangeRecord& record);

/// Writes that line to standard error in one piece: lines of several threads do not mix. Any
/// thread; what cannot be written is lost.
void writeToStandardError(const ExchangeRecord& record);

}  // namespace veltramoor
