// Sends one torrent to the person's BitTorrent client.
#pragma once

#include <optional>
#include <string>

#include "site/FetchPage.h"

namespace veltramoor {

/// Delivers the torrent's name after a send that the client accepted (any status from 200 to 299),
/// nothing after one that failed: with the reason when the client could not be reached, without one
/// when it refused. A success is recorded in the download history; a failure shows
/// one alert first. Nothing is tried twice.
class FetchPageDownload final : public FetchPage<std::optional<std::string>> {
 public:
  FetchPageDownload(std::optional<Url> url, std::string name, Completion completion);

 private:
  void fetch() override;
  [[nodiscard]] bool send();

  std::string name_;
};

}  // namespace veltramoor
