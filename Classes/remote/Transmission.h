// Transmission with remote access enabled.
#pragma once

#include "remote/BitClient.h"

namespace veltramoor {

/// Speaks Transmission's JSON RPC: a handshake for the session id, then one "torrent-add". The
/// HTTP status alone decides success; the reply's body is not read.
class Transmission final : public BitClient {
 public:
  static constexpr std::string_view kName = "Transmission";
  static constexpr int kIndex = 1;
  static constexpr std::string_view kDefaultPort = "9091";
  static constexpr std::string_view kDefaultDescription =
      "Veltramoor can push torrent downloads to your computer if you are using Transmittion "
      "Bittorent Client with remote access enabled.\n\t\n\tSetup:\n\t- Install Transmission on "
      "your "
      "computer.  \n\t- Select \"Preferences\" then select the \"Remote\" tab.\n\t- Check the "
      "\"Enable remote access\" box.\n\t- Make sure your computer is online and running "
      "Transmission.\n\t- Fill in the fields below with the ip address and port (Default is 9091) "
      "Transmission remote access is using.";

  static constexpr std::string_view kRemotePreferences = "its preferences, Remote";

  [[nodiscard]] std::optional<Url> getUrl() const override;
  [[nodiscard]] std::optional<Url> getWebUrl() const override;
  [[nodiscard]] bool isOwnAnswer(const HttpRequest& answered) const override;

  using BitClient::setSessionId;
  /// Fetches the session id, which the server states in a header whatever the answer's status
  /// (409 usually). One try; a missing id shows as a refused add.
  void setSessionId() override;
};

/// Whether an answer is of something that speaks as Transmission does, whatever was asked.
[[nodiscard]] bool isTransmission(const HttpRequest& answered);

}  // namespace veltramoor
