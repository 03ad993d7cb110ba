// Sends one torrent to the person's BitTorrent client.
#pragma once

#include <chrono>
#include <optional>
#include <string>

#include "remote/RemoteDiagnosis.h"
#include "site/FetchPage.h"

namespace veltramoor {

/// Delivers the torrent's name after a send that the client accepted (any status from 200 to 299 to
/// the very request that was made, not to one that a redirect made of it); nothing after one that
/// failed, with the step at which it did. A success is recorded in the download history; a failure
/// shows one alert first. Nothing is tried twice.
class FetchPageDownload final : public FetchPage<std::optional<std::string>, DiagnosisStep> {
 public:
  /// All of a send's requests together.
  static constexpr std::chrono::seconds kLongest{60};

  FetchPageDownload(std::optional<Url> url, std::string name, Completion completion);
  /// With another limit than `kLongest`.
  FetchPageDownload(std::optional<Url> url, std::string name, Completion completion,
                    std::chrono::milliseconds limit);

 private:
  void fetch() override;
  /// Why it failed; absent when it did not.
  [[nodiscard]] std::optional<DiagnosisStep> send();

  std::string name_;
  std::chrono::milliseconds limit_ = kLongest;
};

}  // namespace veltramoor
