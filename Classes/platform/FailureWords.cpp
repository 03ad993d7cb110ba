#include "platform/FailureWords.h"

#include <fmt/format.h>

namespace veltramoor {

std::string sentenceOf(const TransferFailure& failure) {
  const std::string& peer = failure.address;
  switch (failure.kind) {
    case TransferFailureKind::NoAddress:
      return "There is no valid address.";
    case TransferFailureKind::NameNotFound:
      return fmt::format("The name {} was not found.", peer);
    case TransferFailureKind::Refused:
      return fmt::format("{} refuses connections at port {}.", peer, failure.port);
    case TransferFailureKind::Unreachable:
      return fmt::format("There is no way to {} from here.", peer);
    case TransferFailureKind::TimedOut:
      return fmt::format("{} did not answer in time at port {}.", peer, failure.port);
    case TransferFailureKind::GivenUp:
      return "The request was given up.";
    case TransferFailureKind::Tls:
      return fmt::format("No secure connection to {}: {}.", peer, failure.words);
    case TransferFailureKind::BrokenOff:
      return fmt::format("{} broke the connection off.", peer);
    case TransferFailureKind::TooLarge:
      return fmt::format("The answer of {} is too large.", peer);
    case TransferFailureKind::TooManyRedirects:
      return fmt::format("{} leads from one address to the next without end.", peer);
    case TransferFailureKind::NotHttp:
      return fmt::format("What answers at {}, port {}, is no web server.", peer, failure.port);
    case TransferFailureKind::Other:
      break;
  }
  return fmt::format("The exchange with {} failed: {}.", peer, failure.words);
}

}  // namespace veltramoor
