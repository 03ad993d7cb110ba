// A local index site with invented content, to try the application and to test against.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "demo/Catalogue.h"
#include "demo/Faults.h"

namespace veltramoor {

/// What a sign-in with the right password is answered with.
enum class LoginAnswer : std::uint8_t { RedirectToSettings, SettingsPage };

struct DemoSiteOptions {
  /// TCP port on 127.0.0.1; 0 takes a free one.
  int port = 0;
  std::size_t torrents = 3000;
  std::uint64_t seed = 1;
  /// Rows a listing page; the application expects 30.
  std::size_t pageRows = 30;
  /// The notice endpoint's answer.
  std::string notice = {};
  /// Serves the pages in another language to clients without the cookie language=en_EN.
  bool requireLanguage = false;
  /// The host of absolute links; empty: the Host header of the request. A client that reaches the
  /// site under this host or below it gets its cookies for this domain, others for their own Host.
  std::string hostName = {};
  std::string movieDatabaseHost = "movies.example";
  std::string sponsoredDownloadHost = "sponsored.example";
};

/// One request as it came in, without those to /_demo/.
struct DemoRequest {
  std::string method;
  /// Path and query, byte for byte.
  std::string target;
  std::vector<std::pair<std::string, std::string>> cookies;
  /// As they came, those of one name together.
  std::vector<std::pair<std::string, std::string>> headers;
  std::string body;

  /// The first header `name` (without case), or "".
  [[nodiscard]] std::string header(std::string_view name) const;
  /// The first cookie `name`, or "".
  [[nodiscard]] std::string cookie(std::string_view name) const;
};

/// Listens on 127.0.0.1 from construction to destruction, which ends every open connection at once.
/// All members may be called from any thread.
///
/// Accounts: demo/demo, anna/"p&=%+é word", mods/moderate. Listing URLs: /recent/N,
/// /browse/CATEGORY/N/ORDER, /search/QUERY/N/ORDER/CATEGORY, /top/CATEGORY, /user/NAME/N/ORDER.
/// What this class offers, /_demo/ offers over HTTP: POST /_demo/faults?path=&fault=&delay=&times=,
/// /_demo/faults/clear, /_demo/log/clear, /_demo/notice?text=, /_demo/login?answer=redirect|page,
/// /_demo/sessions/expire; GET /_demo/log.
class DemoSite {
 public:
  /// Throws std::runtime_error when the port cannot be bound.
  explicit DemoSite(const DemoSiteOptions& options = {});
  ~DemoSite();
  DemoSite(const DemoSite&) = delete;
  DemoSite& operator=(const DemoSite&) = delete;

  [[nodiscard]] int port() const;
  /// "127.0.0.1:PORT": what the application's site host is set to.
  [[nodiscard]] std::string host() const;
  /// "http://" + host() + `path`; `path` begins with "/".
  [[nodiscard]] std::string url(std::string_view path) const;

  /// The torrents that the pages show, with the numbers behind the worded dates and sizes.
  [[nodiscard]] const Catalogue& catalogue() const;

  /// Puts `fault` on every path that begins with `path`, in place of an earlier one on `path`. The
  /// longest prefix wins.
  void setFault(const std::string& path, const Fault& fault);
  void clearFaults();

  /// The newest 10,000 requests, oldest first. A request is there before its answer is sent.
  [[nodiscard]] std::vector<DemoRequest> log() const;
  void clearLog();

  void setNotice(const std::string& text);
  void setLoginAnswer(LoginAnswer answer);
  /// Makes every session cookie handed out so far worthless.
  void expireSessions();

 private:
  class Impl;
  std::unique_ptr<Impl> impl_;
};

}  // namespace veltramoor
