// Why an exchange had no answer.
#pragma once

#include <string>
#include <string_view>

#include "platform/Url.h"

namespace veltramoor {

enum class TransferFailureKind {
  /// There was no valid URL to ask.
  NoAddress,
  NameNotFound,
  Refused,
  /// No way to the address: no route, or the network turned the attempt down.
  Unreachable,
  TimedOut,
  /// By its caller, or because the application closes.
  GivenUp,
  /// No encrypted connection could be agreed on, or its certificate is not believed.
  Tls,
  /// The peer ended the connection before its answer was whole.
  BrokenOff,
  TooLarge,
  TooManyRedirects,
  /// The peer answers something that is not HTTP/1.
  NotHttp,
  Other,
};

/// "refused", "timed out": for a log. What a person is told on a screen, the screen chooses.
[[nodiscard]] std::string_view nameOf(TransferFailureKind kind);

struct TransferFailure {
  TransferFailureKind kind = TransferFailureKind::Other;
  /// What the transport says of it, libcurl's words where it has any: one printable line, never
  /// empty, without credentials.
  std::string words;
  /// Host that was tried, an IPv6 address in brackets; where a name was connected to, with its IP
  /// address: "nas.example (192.0.2.7)". Empty without a URL.
  std::string address;
  /// 0 without a URL.
  int port = 0;

  friend bool operator==(const TransferFailure&, const TransferFailure&) = default;
};

/// A failure at the host and port of `url`; `words` are made one printable line.
[[nodiscard]] TransferFailure failureAt(const Url& url, TransferFailureKind kind,
                                        std::string_view words);

}  // namespace veltramoor
