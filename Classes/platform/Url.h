// An absolute URL that is valid as it stands.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace veltramoor {

/// A URL exactly as it was given: nothing is escaped, decoded or normalised, so path and query
/// reach the wire byte for byte. Immutable; safe to share between threads.
class Url {
 public:
  /// The URL that `text` is, or nothing when the text is no valid URL as it stands (RFC 3986): no
  /// scheme, blanks, control or non-ASCII characters, any of "<>\^`{|}, a `%` without two hex
  /// digits, square brackets outside an IP literal. An http(s) URL must also have a host that
  /// libcurl accepts and a port of at most 65535. Other schemes (magnet) need only valid
  /// characters.
  [[nodiscard]] static std::optional<Url> parse(std::string_view text);

  /// The whole URL, as given.
  [[nodiscard]] const std::string& absoluteString() const { return text_; }
  /// Lower-case scheme without the colon.
  [[nodiscard]] const std::string& scheme() const { return scheme_; }
  /// Lower-case host without brackets; empty for schemes that have none.
  [[nodiscard]] const std::string& host() const { return host_; }
  /// Effective port: as written, else 80 or 443 for http and https, else 0.
  [[nodiscard]] int port() const { return port_; }
  /// Whether `UrlLoading` can fetch it: http or https.
  [[nodiscard]] bool isHttp() const { return scheme_ == "http" || scheme_ == "https"; }
  /// The URL with any `user:password@` left out: the only form for titles, logs and error texts.
  [[nodiscard]] std::string withoutCredentials() const;
  /// What stands before the host's "@", as given; empty when there is none.
  [[nodiscard]] std::string credentials() const;

  friend bool operator==(const Url& a, const Url& b) { return a.text_ == b.text_; }

 private:
  Url() = default;
  std::string text_;
  std::string scheme_;
  std::string host_;
  int port_ = 0;
};

}  // namespace veltramoor
