// What a redirect makes of a request.
#pragma once

#include <optional>
#include <string_view>

#include "platform/UrlLoading.h"

namespace veltramoor {

/// The request that follows an answer of `status` to `request`, or nothing when that answer is the
/// final one: no redirect, or one to something that is not http or https. `target` is the absolute
/// URL that the Location field leads to; what may not stand in a URL is escaped here.
///
/// A request turned into a GET loses its body and content headers. A new origin (scheme, host or
/// port) never gets the old one's credentials, cookies or session headers; credentials written into
/// a target are not believed. A body is never handed to a new origin: it may hold a password, so a
/// 307 or 308 that asks for it is the final answer.
[[nodiscard]] std::optional<UrlRequest> redirectedRequest(const UrlRequest& request, int status,
                                                          std::string_view target);

/// Field names compare without case (RFC 9110 section 5.1).
[[nodiscard]] bool isSameFieldName(std::string_view a, std::string_view b);

}  // namespace veltramoor
