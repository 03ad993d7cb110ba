#include "platform/Url.h"

#include <curl/curl.h>

#include <algorithm>
#include <charconv>
#include <memory>

#include "Util/Ascii.h"

namespace veltramoor {
namespace {

constexpr int kHighestPort = 65535;

bool isAlpha(char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z'); }
bool isDigit(char c) { return c >= '0' && c <= '9'; }

// RFC 3986 sections 2.2 and 2.3, without the square brackets and the "#", which have their places.
bool isUrlCharacter(char c) {
  constexpr std::string_view kPunctuation = "-._~:/?@!$&'()*+,;=";
  return isAlpha(c) || isDigit(c) || kPunctuation.find(c) != std::string_view::npos;
}

bool isValidText(std::string_view text) {
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] == '%') {
      if (!percentEscape(text.substr(i))) {
        return false;
      }
      i += 2;
    } else if (!isUrlCharacter(text[i])) {
      return false;
    }
  }
  return true;
}

// As after the fragment's "#", but the text may hold one "#" itself.
bool isValidTail(std::string_view text) {
  const std::size_t hash = text.find('#');
  return isValidText(text.substr(0, hash)) &&
         (hash == std::string_view::npos || isValidText(text.substr(hash + 1)));
}

// Where the authority begins and ends in a URL; both 0 when it has none.
struct Authority {
  std::size_t begin = 0;
  std::size_t end = 0;
};

Authority authorityOf(std::string_view text, std::size_t schemeLength) {
  if (text.substr(schemeLength + 1, 2) != "//") {
    return {};
  }
  const std::size_t begin = schemeLength + 3;
  return {begin, std::min(text.find_first_of("/?#", begin), text.size())};
}

struct HostAndPort {
  std::string host;
  int port = 0;
};

// [user-info "@"] host [":" port]
std::optional<HostAndPort> parseAuthority(std::string_view authority) {
  HostAndPort parsed;
  if (const std::size_t at = authority.find('@'); at != std::string_view::npos) {
    if (!isValidText(authority.substr(0, at))) {
      return std::nullopt;
    }
    authority.remove_prefix(at + 1);
  }
  std::string_view host;
  if (authority.starts_with('[')) {
    const std::size_t end = authority.find(']');
    if (end == std::string_view::npos) {
      return std::nullopt;
    }
    host = authority.substr(1, end - 1);
    authority.remove_prefix(end + 1);
  } else {
    host = authority.substr(0, authority.find(':'));
    authority.remove_prefix(host.size());
  }
  if (!isValidText(host) || host.find('@') != std::string_view::npos) {
    return std::nullopt;
  }
  if (!authority.empty()) {
    const std::string_view digits = authority.substr(1);
    const auto [end, error] =
        std::from_chars(digits.data(), digits.data() + digits.size(), parsed.port);
    if (!authority.starts_with(':') || (!digits.empty() && !isDigit(digits.front())) ||
        end != digits.data() + digits.size() || (error != std::errc() && !digits.empty()) ||
        parsed.port > kHighestPort) {
      return std::nullopt;
    }
  }
  parsed.host = lowerCase(host);
  return parsed;
}

// Host and port as the transport will understand them: escapes decoded, short forms of IPv4
// addresses written out, so that two spellings of one origin compare equal.
std::optional<HostAndPort> parseWithCurl(const std::string& text) {
  const std::unique_ptr<CURLU, decltype(&curl_url_cleanup)> url(curl_url(), &curl_url_cleanup);
  if (url == nullptr ||
      curl_url_set(url.get(), CURLUPART_URL, text.c_str(), CURLU_PATH_AS_IS) != CURLUE_OK) {
    return std::nullopt;
  }
  const auto part = [&url](CURLUPart which, unsigned flags) -> std::optional<std::string> {
    char* value = nullptr;
    if (curl_url_get(url.get(), which, &value, flags) != CURLUE_OK) {
      return std::nullopt;
    }
    const std::unique_ptr<char, decltype(&curl_free)> owner(value, &curl_free);
    return value;
  };
  const auto host = part(CURLUPART_HOST, 0);
  const auto port = part(CURLUPART_PORT, CURLU_DEFAULT_PORT);
  if (!host || host->empty() || !port) {
    return std::nullopt;
  }
  HostAndPort parsed{lowerCase(*host), 0};
  if (parsed.host.starts_with('[')) {
    parsed.host = parsed.host.substr(1, parsed.host.size() - 2);
  }
  std::from_chars(port->data(), port->data() + port->size(), parsed.port);
  return parsed;
}

}  // namespace

std::optional<Url> Url::parse(std::string_view text) {
  const std::size_t colon = text.find(':');
  if (colon == std::string_view::npos || colon == 0 || !isAlpha(text.front()) ||
      !std::all_of(text.begin(), text.begin() + static_cast<std::ptrdiff_t>(colon), [](char c) {
        return isAlpha(c) || isDigit(c) || c == '+' || c == '-' || c == '.';
      })) {
    return std::nullopt;
  }
  const Authority authority = authorityOf(text, colon);
  if (!isValidTail(text.substr(authority.end == 0 ? colon + 1 : authority.end))) {
    return std::nullopt;
  }
  Url url;
  url.text_ = text;
  url.scheme_ = lowerCase(text.substr(0, colon));
  std::optional<HostAndPort> parsed;
  if (authority.end != 0) {
    parsed = parseAuthority(text.substr(authority.begin, authority.end - authority.begin));
    if (!parsed) {
      return std::nullopt;
    }
  }
  if (url.isHttp()) {
    // Without an authority curl would take the first piece of the path for one.
    if (!parsed || parsed->host.empty()) {
      return std::nullopt;
    }
    parsed = parseWithCurl(url.text_);
    if (!parsed) {
      return std::nullopt;
    }
  }
  if (parsed) {
    url.host_ = std::move(parsed->host);
    url.port_ = parsed->port;
  }
  return url;
}

std::string Url::withoutCredentials() const {
  const std::string given = credentials();
  const bool hasAt = !given.empty() || text_.find("://@") == scheme_.size();
  const std::size_t begin = scheme_.size() + 3;
  return hasAt ? text_.substr(0, begin) + text_.substr(begin + given.size() + 1) : text_;
}

std::string Url::credentials() const {
  const Authority authority = authorityOf(text_, scheme_.size());
  const std::string_view text = std::string_view(text_).substr(0, authority.end);
  const std::size_t at = text.find('@', authority.begin);
  return at == std::string_view::npos ? std::string()
                                      : text_.substr(authority.begin, at - authority.begin);
}

}  // namespace veltramoor
