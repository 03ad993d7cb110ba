// What a magnet link calls its torrent.
#pragma once

#include <string>
#include <string_view>

namespace veltramoor {

/// The link's own display name ("dn"), percent-decoded; the link itself when it has none that is
/// text.
[[nodiscard]] std::string nameOfMagnet(std::string_view magnet);

}  // namespace veltramoor
