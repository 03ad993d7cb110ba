// What follows a session check or a sign-in that succeeded.
#pragma once

namespace veltramoor {

/// Sets the site's language to English and fills the shared UserInfo from the settings page. What
/// the site answers changes nothing about the login. Blocks; for workers.
void setUpSession();

}  // namespace veltramoor
