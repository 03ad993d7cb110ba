// What a person is told of a failed transfer.
#pragma once

#include <string>

#include "platform/TransferFailure.h"

namespace veltramoor {

/// "nas.example (192.0.2.7) refuses connections at port 9091.": one sentence, printable, without
/// credentials.
[[nodiscard]] std::string sentenceOf(const TransferFailure& failure);

}  // namespace veltramoor
