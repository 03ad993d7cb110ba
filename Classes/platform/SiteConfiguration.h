// The hosts and addresses that the person or the builder chooses.
#pragma once

#include <cstddef>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "platform/Url.h"

namespace veltramoor {

/// Hosts may carry a port ("127.0.0.1:8080"). The names here, in kebab case, are the keys of the
/// configuration file and, with "--" before them, the command-line options.
struct SiteConfiguration {
  /// site-host: the index site; empty until one is configured.
  std::string siteHost;
  /// default-site-host: the built-in host of the language cookie and of logout.
  std::string defaultSiteHost = "index.example";
  /// forum-host: may be a folder of a site ("127.0.0.1:8080/forum").
  std::string forumHost = "forum.index.example";
  std::string captchaHost = "captcha.example";
  std::string movieDatabaseHost = "movies.example";
  std::string sponsoredDownloadHost = "sponsored.example";
  std::string noticeHost = "notice.example";
  /// donation-url: the page that the donation view opens.
  std::string donationUrl = "https://donate.example/";
  /// magnet-entities: whether "&amp;" in a page's magnet links is sent as it stands there ("keep")
  /// or as "&" ("decode"), for a site that writes its links so.
  std::string magnetEntities = "keep";

  /// "http://" + siteHost + "/".
  [[nodiscard]] std::string siteHomeUrl() const { return siteAddress("/"); }
  /// "http://" + siteHost + `path`, which begins with "/"; and the same as a URL: none when it
  /// cannot be one, as for a site that is not set.
  [[nodiscard]] std::string siteAddress(std::string_view path) const;
  [[nodiscard]] std::optional<Url> siteUrl(std::string_view path) const;
  /// Whether `donationUrl` leads anywhere: names under .example are reserved (RFC 2606) and stand
  /// for a page that nobody has set.
  [[nodiscard]] bool hasDonationPage() const;
  /// `host` without its port: what a cookie's domain is made of.
  [[nodiscard]] static std::string hostWithoutPort(const std::string& host);

  /// Every key with a pointer to its field, in declaration order: for option parsers and files.
  [[nodiscard]] static std::vector<std::pair<std::string, std::string SiteConfiguration::*>> keys();

  /// The file's values over the defaults, normalised. A missing file is no error; one that cannot
  /// be read (it must be an ordinary file of at most `kLargestFile` bytes) or parsed keeps the
  /// defaults. What is wrong is appended to `problems`, which may be null: a printable line each,
  /// naming file and line.
  [[nodiscard]] static SiteConfiguration load(const std::filesystem::path& file,
                                              std::vector<std::string>* problems);
  static constexpr std::size_t kLargestFile = 1024 * 1024;
  /// `Bundle::configurationFolder()/veltramoor.toml`.
  [[nodiscard]] static std::filesystem::path defaultFile();
  /// Stores `site-host` in the file, keeping its other keys; false when it cannot be written.
  static bool saveSiteHost(const std::filesystem::path& file, const std::string& siteHost);

  /// Whether `text` is a host, with or without a port, and nothing else.
  [[nodiscard]] static bool isHost(const std::string& text);
  /// A host as it is compared and as a web engine writes it: in lower case and without ":80"; what
  /// follows a "/" stays.
  [[nodiscard]] static std::string normalizedHost(std::string_view host);
  /// Normalises the hosts that addresses and cookies are made of. (The movie database and the
  /// sponsor stay as they are: they are looked for in pages.)
  void normalize();

  /// Why `value` cannot stand for `key`, as the end of a sentence that does not repeat it (there
  /// may be a password in it); empty when it can.
  [[nodiscard]] static std::string_view validationError(std::string_view key,
                                                        const std::string& value);

  /// The configuration in force, normalised. Thread-safe; what was read stays valid when another
  /// is set.
  static const SiteConfiguration& current();
  static void setCurrent(SiteConfiguration configuration);
};

}  // namespace veltramoor
