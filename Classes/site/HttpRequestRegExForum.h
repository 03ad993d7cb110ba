// A page of the site's forum.
#pragma once

#include "site/HttpRequest.h"

namespace veltramoor {

/// Asks as a handset, to which the forum serves pages for small screens; `result` is the page as
/// fetched.
class HttpRequestRegExForum final : public HttpRequest {
 public:
  using HttpRequest::HttpRequest;

  void request() override;
};

}  // namespace veltramoor
