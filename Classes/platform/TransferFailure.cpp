#include "platform/TransferFailure.h"

#include "Util/PrintableLine.h"

namespace veltramoor {

std::string_view nameOf(TransferFailureKind kind) {
  switch (kind) {
    case TransferFailureKind::NoAddress:
      return "no address";
    case TransferFailureKind::NameNotFound:
      return "name not found";
    case TransferFailureKind::Refused:
      return "refused";
    case TransferFailureKind::Unreachable:
      return "unreachable";
    case TransferFailureKind::TimedOut:
      return "timed out";
    case TransferFailureKind::GivenUp:
      return "given up";
    case TransferFailureKind::Tls:
      return "TLS failed";
    case TransferFailureKind::BrokenOff:
      return "broken off";
    case TransferFailureKind::TooLarge:
      return "too large";
    case TransferFailureKind::TooManyRedirects:
      return "too many redirects";
    case TransferFailureKind::NotHttp:
      return "not HTTP";
    case TransferFailureKind::Other:
      break;
  }
  return "failed";
}

TransferFailure failureAt(const Url& url, TransferFailureKind kind, std::string_view words) {
  const std::string& host = url.host();
  const bool isIpv6 = host.find(':') != std::string::npos;
  return {kind, printableLine(words), isIpv6 ? "[" + host + "]" : host, url.port()};
}

}  // namespace veltramoor
