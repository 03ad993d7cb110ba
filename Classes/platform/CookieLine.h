// One cookie as a line of a Netscape cookie file, the form in which libcurl lists and takes
// cookies.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "platform/CookieStorage.h"

namespace veltramoor {

/// domain, "TRUE" for a domain cookie, path, "TRUE" for secure, Unix time of expiry (0: session),
/// name, value; tabs between. "#HttpOnly_" stands before the domain of an http-only cookie.
[[nodiscard]] std::optional<Cookie> cookieOfLine(std::string_view line);

/// Absent for a cookie that the line cannot hold: no name, a path of "TRUE" or "FALSE", a field
/// with a tab, a line end or a NUL in it; and for one whose domain libcurl and others would each
/// read in their own way: an empty one, one with two dots in a row, or with a blank or one of `/;,`
/// in it.
[[nodiscard]] std::optional<std::string> lineOfCookie(const Cookie& cookie);

/// The same with the path as libcurl reads it: of a path without a slash and "/" 7.88.1 would keep
/// both cookies and send both.
[[nodiscard]] std::optional<std::string> lineForEngine(const Cookie& cookie);

/// What decides whether one cookie replaces another: domain without case, path, name (RFC 6265
/// section 5.3).
[[nodiscard]] std::string identityOf(const Cookie& cookie);
/// What decides it for libcurl, to which a path's case, its quotes, and a slash at its end are
/// nothing.
[[nodiscard]] std::string engineIdentityOf(const Cookie& cookie);

/// Whether its time is over by now; a session cookie's never is.
[[nodiscard]] bool isExpired(const Cookie& cookie);

/// ASCII letters only: what domains are compared by.
[[nodiscard]] std::string lowerCaseDomain(std::string_view domain);

}  // namespace veltramoor
