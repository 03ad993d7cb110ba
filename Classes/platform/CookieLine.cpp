#include "platform/CookieLine.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <chrono>

#include "Util/Ascii.h"

namespace veltramoor {
namespace {

constexpr std::string_view kHttpOnlyMark = "#HttpOnly_";
constexpr std::size_t kFieldCount = 7;
// The smallest time that is not 0, which would mean a session cookie.
constexpr std::int64_t kLongExpired = 1;

// As libcurl reads it: without quotes, without a slash at the end, and "/" in place of what has
// none to begin with.
std::string enginePath(std::string_view path) {
  if (path.starts_with('"')) {
    path.remove_prefix(1);
  }
  if (path.ends_with('"')) {
    path.remove_suffix(1);
  }
  if (!path.starts_with('/')) {
    return "/";
  }
  if (path.size() > 1 && path.ends_with('/')) {
    path.remove_suffix(1);
  }
  return std::string(path);
}

/// Of the forms that no host has, libcurl takes some apart and a web engine others, so that what
/// was stored under one name could not be deleted under it.
bool isOdd(std::string_view domain) {
  return domain.empty() || domain == "." || domain.find("..") != domain.npos ||
         domain.find_first_of(" /;,") != domain.npos;
}

}  // namespace

std::optional<Cookie> cookieOfLine(std::string_view line) {
  Cookie cookie;
  cookie.httpOnly = line.starts_with(kHttpOnlyMark);
  if (cookie.httpOnly) {
    line.remove_prefix(kHttpOnlyMark.size());
  }
  std::array<std::string_view, kFieldCount> fields;
  for (std::size_t i = 0; i < kFieldCount; ++i) {
    const std::size_t end = i + 1 == kFieldCount ? line.size() : line.find('\t');
    if (end == std::string_view::npos) {
      return std::nullopt;
    }
    fields[i] = line.substr(0, end);
    line.remove_prefix(std::min(end + 1, line.size()));
  }
  std::int64_t expires = 0;
  std::from_chars(fields[4].data(), fields[4].data() + fields[4].size(), expires);
  cookie.domain = fields[0];
  cookie.path = fields[2];
  cookie.secure = fields[3] == "TRUE";
  if (expires != 0) {
    cookie.expires = expires;
  }
  cookie.name = fields[5];
  cookie.value = fields[6];
  return cookie;
}

std::optional<std::string> lineOfCookie(const Cookie& cookie) {
  constexpr std::string_view kSeparators("\t\r\n\0", 4);
  // "#" would begin a comment, "Set-Cookie:" a line of another form; a path that reads as a truth
  // value would be taken for the next field.
  if (cookie.name.empty() || cookie.path == "TRUE" || cookie.path == "FALSE" ||
      isOdd(cookie.domain) || cookie.domain.starts_with('#') ||
      lowerCase(cookie.domain).starts_with("set-cookie:")) {
    return std::nullopt;
  }
  for (const std::string* field : {&cookie.name, &cookie.value, &cookie.domain, &cookie.path}) {
    if (field->find_first_of(kSeparators) != std::string::npos) {
      return std::nullopt;
    }
  }
  const std::int64_t expires = cookie.expires ? std::max(*cookie.expires, kLongExpired) : 0;
  std::string line;
  if (cookie.httpOnly) {
    line += kHttpOnlyMark;
  }
  line += cookie.domain;
  line += cookie.domain.starts_with('.') ? "\tTRUE\t" : "\tFALSE\t";
  line += cookie.path.empty() ? "/" : cookie.path;
  line += cookie.secure ? "\tTRUE\t" : "\tFALSE\t";
  line += std::to_string(expires);
  line += '\t';
  line += cookie.name;
  line += '\t';
  line += cookie.value;
  return line;
}

std::optional<std::string> lineForEngine(const Cookie& cookie) {
  Cookie read = cookie;
  read.path = enginePath(cookie.path);
  return lineOfCookie(read);
}

std::string lowerCaseDomain(std::string_view domain) { return lowerCase(domain); }

bool isExpired(const Cookie& cookie) {
  const auto now = std::chrono::system_clock::now().time_since_epoch();
  return cookie.expires &&
         *cookie.expires < std::chrono::duration_cast<std::chrono::seconds>(now).count();
}

std::string identityOf(const Cookie& cookie) {
  return lowerCase(cookie.domain) + '\t' + cookie.path + '\t' + cookie.name;
}

std::string engineIdentityOf(const Cookie& cookie) {
  return lowerCase(cookie.domain + '\t' + enginePath(cookie.path)) + '\t' + cookie.name;
}

}  // namespace veltramoor
