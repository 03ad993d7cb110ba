// Where the person's BitTorrent client is, at one moment.
#pragma once

#include <optional>
#include <string>

namespace veltramoor {

/// The values of ServerInfo, which others may change meanwhile.
struct RemoteSettings {
  std::optional<std::string> client = std::nullopt;
  std::optional<std::string> address = std::nullopt;
  std::optional<std::string> port = std::nullopt;
  std::optional<std::string> username = std::nullopt;
  std::optional<std::string> password = std::nullopt;
};

}  // namespace veltramoor
