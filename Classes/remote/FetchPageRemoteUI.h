// Fetches the remote client's own web interface, which is also the test of its settings.
#pragma once

#include <chrono>
#include <functional>
#include <optional>
#include <string>

#include "site/FetchPage.h"

namespace veltramoor {

/// Delivers the text that came back, an error page's too; absent without an answer. A failure shows
/// one alert before the delivery, a success one only for the remote settings screen.
///
/// `url()` may hold the password: show it through `withoutCredentials` only.
class FetchPageRemoteUI final : public FetchPage<std::optional<std::string>> {
 public:
  /// Handshake and page together.
  static constexpr std::chrono::seconds kLongest{60};

  /// The URL given is not used: `url()` is the stored client's web address from the start, without
  /// the credentials when an address can't hold them; absent when no client is stored or its
  /// settings make no valid address.
  /// `failureClosed` runs on the main thread once the person has closed the alert of a failure.
  FetchPageRemoteUI(std::optional<Url> url, bool fromRemoteSettings, Completion completion,
                    std::function<void()> failureClosed = {});

 private:
  void fetch() override;

  bool fromRemoteSettings_;
  std::function<void()> failureClosed_;
};

}  // namespace veltramoor
