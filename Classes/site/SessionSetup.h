// What follows a session check or a sign-in that succeeded.
#pragma once

#include "site/HttpRequest.h"

namespace veltramoor {

/// Performs `request`, a check or a sign-in. When it shows a session, sets the site's language to
/// English and fills the shared UserInfo from the settings page; how that goes changes nothing
/// about the login. Never throws: `request` is always there to be judged. Blocks; for workers.
void requestAndSetUpSession(HttpRequest& request) noexcept;

}  // namespace veltramoor
