// The account page without the rest of the site around it.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "site/HttpRequest.h"
#include "site/PageCleaning.h"

namespace veltramoor {

/// The expression that the account page matches; its captures are the head and the preferences.
extern const std::string_view kAccountRegex;

/// After `request()`, `result` is the page's head and everything from its preferences to its foot,
/// without advertising; a fixed error page when the layout is not recognised (in time), as for
/// somebody who is not signed in; absent when the transfer failed.
class HttpRequestRegExProfileDetails final : public HttpRequest {
 public:
  using HttpRequest::HttpRequest;

  void request() override;

  /// The page cut down as `request()` does it; absent when its layout is not recognised, or
  /// not in time.
  [[nodiscard]] static std::optional<std::string> cleaned(std::string_view page,
                                                          PageCleaning cleaning = PageCleaning());
};

}  // namespace veltramoor
