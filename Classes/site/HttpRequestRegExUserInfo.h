// Name and status from the account page.
#pragma once

#include "site/HttpRequest.h"

namespace veltramoor {

/// Reads an already fetched settings page: set `responseData`, then call `request()`, which fetches
/// nothing and fills the shared UserInfo. A page without a user makes it the anonymous one.
class HttpRequestRegExUserInfo final : public HttpRequest {
 public:
  HttpRequestRegExUserInfo() : HttpRequest(std::nullopt) {}

  void request() override;
};

}  // namespace veltramoor
