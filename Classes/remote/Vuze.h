// Vuze with the Web Remote plug-in.
#pragma once

#include "remote/BitClient.h"

namespace veltramoor {

/// Adds through the base's Transmission-style call, without a session id.
class Vuze final : public BitClient {
 public:
  static constexpr std::string_view kName = "Vuze";
  static constexpr int kIndex = 0;
  static constexpr std::string_view kDefaultPort = "9091";
  static constexpr std::string_view kDefaultDescription =
      "Veltramoor can push torrent downloads to your computer if you are using Vuze (Azureus) "
      "Bittorent Client with Vuze Web Remote plugin installed.\n\t\n\tSetup:\n\t- Install Vuze "
      "(Azureus) on your computer.  \n\t- Install Vuze Web Remote plugin.  \n\t- Make sure your "
      "computer is online and running Vuze.\n\t- Fill in the fields below with the ip address and "
      "port (Default is 9091) Azureus Web UI plugin is using.";

  static constexpr std::string_view kRemotePreferences = "the options of its Web Remote plug-in";

  [[nodiscard]] std::string getData() override;
  [[nodiscard]] std::optional<Url> getUrl() const override;
  [[nodiscard]] std::optional<Url> getWebUrl() const override;
  /// A call that changes nothing, made as torrents are added.
  [[nodiscard]] HttpRequest getProbe() const override;
  [[nodiscard]] bool isOwnAnswer(const HttpRequest& answered) const override;
};

}  // namespace veltramoor
