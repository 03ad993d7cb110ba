// uTorrent with its Web UI enabled.
#pragma once

#include "remote/BitClient.h"

namespace veltramoor {

/// Reads a token from the Web UI's token page, then adds with one GET.
class Utorrent final : public BitClient {
 public:
  static constexpr std::string_view kName = "Utorrent";
  static constexpr int kIndex = 2;
  static constexpr std::string_view kDefaultPort = "8080";
  static constexpr std::string_view kDefaultDescription =
      "Veltramoor can push torrent downloads to your computer if you are using Utorrent Bittorent "
      "Client with Web UI enabled.\n\tAs of March 2010, Web UI is only available on windows "
      "version "
      "of Utorrent.\n\tSetup:\n\t- Install Utorrent on your computer.  \n\t- Select "
      "\"Preferences\" Utorrent.  Select \"Web UI\" option.\n\t- Check \"Enable Web UI\" "
      "box.\n\t- Check \"Alternative listening port\" box.\n\t- Make sure your computer is online "
      "and running Utorrent.\n\t- Fill in the fields below with the ip address and port (Default "
      "is "
      "8080) of Utorrent Web UI is using.";

  static constexpr std::string_view kRemotePreferences = "its preferences, Web UI";

  [[nodiscard]] std::string getData() override;
  /// The adding URL: token and file name stand in it as they are, so that the `&` of a magnet link
  /// begin further parameters.
  [[nodiscard]] std::optional<Url> getUrl() const override;
  [[nodiscard]] std::optional<Url> getWebUrl() const override;
  using BitClient::setSessionId;
  /// Fetches the token. A page of another form becomes the token as a whole, with which the add
  /// then fails.
  void setSessionId() override;
  [[nodiscard]] HttpRequest getDownload() const override;
  /// The token page.
  [[nodiscard]] HttpRequest getProbe() const override;
  [[nodiscard]] bool isOwnAnswer(const HttpRequest& answered) const override;
};

}  // namespace veltramoor
