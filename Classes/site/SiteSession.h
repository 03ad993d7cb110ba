// The session at the site: whether there is one, and how it ends.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "site/HttpRequest.h"

namespace veltramoor {

/// How a login ended.
struct LoginOutcome {
  /// A session exists now, or anonymous use was chosen.
  bool loggedIn = false;
  /// What to tell the person; "" after a success.
  std::string message;
};

/// "http://" and the site host before "/settings" and "/login": the account page, which is the
/// login form to strangers, and where that form goes.
[[nodiscard]] std::string settingsAddress();
[[nodiscard]] std::string loginAddress();

/// Whether the page holds the site's login form.
[[nodiscard]] bool isLoginHeader(std::string_view page);
/// Whether the text is exactly the login address.
[[nodiscard]] bool isLoginUrl(std::string_view url);
/// Whether the page says that the name or the password is wrong.
[[nodiscard]] bool isInvalidUsername(std::string_view page);

/// Whether the answer to the settings page shows a session: a valid response without the form.
/// A page that is not UTF-8, and so has no text, is judged by its bytes.
[[nodiscard]] bool sessionExists(const HttpRequest& settingsPage);
/// Judges the last exchange of a login; a request whose `result` is "anonymous" is a success.
[[nodiscard]] LoginOutcome judgeLogin(const HttpRequest& request);

/// Deletes the session's cookies, those of the site and of its captcha service, and returns how
/// many. Every other host keeps its own.
std::size_t deleteSessionCookies();

}  // namespace veltramoor
