// What a row's link is sent as.
#pragma once

#include <optional>
#include <string>

#include "platform/Url.h"

namespace veltramoor {

/// A torrent's link (`Torrent::downloadUrl`) as the page writes it or, where the configuration's
/// magnet-entities is "decode", with each "&amp;" in it as "&". Nothing when that is no URL.
[[nodiscard]] std::optional<Url> sendAddress(const std::string& downloadUrl);

}  // namespace veltramoor
