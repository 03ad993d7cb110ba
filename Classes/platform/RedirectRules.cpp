#include "platform/RedirectRules.h"

#include <algorithm>
#include <array>
#include <string>

#include "Util/Ascii.h"

namespace veltramoor {
namespace {

// Servers write blanks and letters of their language into Location. No fragment is ever sent, so
// the target ends at the first "#".
std::string escapedTarget(std::string_view target) {
  constexpr std::string_view kForbidden = "\"<>\\^`{|}";
  target = target.substr(0, target.find('#'));
  const std::size_t authorityEnd = target.find_first_of("/?", target.find("://") + 3);
  std::string escaped;
  for (std::size_t i = 0; i < target.size(); ++i) {
    const char c = target[i];
    const auto byte = static_cast<unsigned char>(c);
    const bool isBracketInPath = (c == '[' || c == ']') && i > authorityEnd;
    if ((c == '%' && !percentEscape(target.substr(i))) || byte <= ' ' || byte >= 0x7f ||
        isBracketInPath || kForbidden.find(c) != std::string_view::npos) {
      appendPercentEscaped(escaped, c);
    } else {
      escaped += c;
    }
  }
  return escaped;
}

bool isSameOrigin(const Url& a, const Url& b) {
  return a.scheme() == b.scheme() && a.host() == b.host() && a.port() == b.port();
}

// Describes a body that a request turned into a GET no longer has.
bool isContentField(const std::string& lowerCaseName) {
  return lowerCaseName.starts_with("content-") || lowerCaseName == "transfer-encoding" ||
         lowerCaseName == "expect";
}

// Proves something to one origin ("X-Transmission-Session-Id" and its like), or names it.
bool isOriginField(const std::string& lowerCaseName) {
  constexpr std::array<std::string_view, 4> kNames{"authorization", "proxy-authorization", "cookie",
                                                   "host"};
  return std::find(kNames.begin(), kNames.end(), lowerCaseName) != kNames.end() ||
         lowerCaseName.find("session-id") != std::string::npos ||
         lowerCaseName.find("token") != std::string::npos;
}

}  // namespace

bool isSameFieldName(std::string_view a, std::string_view b) {
  return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                    [](char x, char y) { return lowerCase(x) == lowerCase(y); });
}

std::optional<UrlRequest> redirectedRequest(const UrlRequest& request, int status,
                                            std::string_view target) {
  if (status != 301 && status != 302 && status != 303 && status != 307 && status != 308) {
    return std::nullopt;
  }
  auto url = Url::parse(escapedTarget(target));
  if (url) {
    url = Url::parse(url->withoutCredentials());
  }
  if (!url || !url->isHttp()) {
    return std::nullopt;
  }
  UrlRequest next = request;
  const bool sameOrigin = isSameOrigin(*url, request.url);
  if (const std::string credentials = request.url.credentials();
      sameOrigin && !credentials.empty()) {
    std::string text = url->absoluteString();
    text.insert(url->scheme().size() + 3, credentials + "@");
    url = Url::parse(text);
  }
  next.url = *url;
  const bool becomesGet = (status == 303 && request.method != "HEAD") ||
                          ((status == 301 || status == 302) && request.method == "POST");
  if (becomesGet) {
    next.method = "GET";
    next.body.reset();
  }
  if (!sameOrigin && next.body) {
    return std::nullopt;
  }
  std::erase_if(next.headers, [&](const auto& field) {
    const std::string name = lowerCase(field.first);
    return (becomesGet && isContentField(name)) || (!sameOrigin && isOriginField(name));
  });
  return next;
}

}  // namespace veltramoor
