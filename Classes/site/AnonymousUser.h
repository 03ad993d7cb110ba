// Using the site without an account.
#pragma once

namespace veltramoor {

/// Makes the shared UserInfo the anonymous user. No request is made.
void becomeAnonymous();

}  // namespace veltramoor
