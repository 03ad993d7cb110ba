// Which page stands at which address of the demo site.
#pragma once

#include <atomic>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

#include "demo/HttpFront.h"
#include "demo/PageFrame.h"

namespace veltramoor {

[[nodiscard]] SiteAnswer html(std::string body, int status = 200);
[[nodiscard]] SiteAnswer redirect(std::string location);

/// Thread-safe.
class SitePages {
 public:
  explicit SitePages(const DemoSiteOptions& options);

  [[nodiscard]] const Catalogue& catalogue() const { return catalogue_; }
  /// The ordinary answer; `layout` may change its markup (see PageContext).
  [[nodiscard]] SiteAnswer answer(const SiteRequest& request, FaultKind layout) const;
  /// Whom a page in answer to `request` is for.
  [[nodiscard]] PageContext contextFor(const SiteRequest& request) const;

  void setNotice(const std::string& text);
  void setLoginAnswer(LoginAnswer answer) { loginAnswer_ = answer; }
  void expireSessions() { accounts_.expireSessions(); }

 private:
  using Parts = std::vector<std::string>;

  [[nodiscard]] std::string cookieDomain(const SiteRequest& request) const;
  /// Absent for an address without a listing.
  [[nodiscard]] std::optional<std::string> listing(const PageContext& context,
                                                   const Parts& parts) const;
  [[nodiscard]] SiteAnswer page(const SiteRequest& request, const PageContext& context,
                                const Parts& parts) const;
  [[nodiscard]] SiteAnswer login(const SiteRequest& request, PageContext context) const;
  [[nodiscard]] SiteAnswer forum(const PageContext& context, const Parts& parts,
                                 bool ownHost) const;

  DemoSiteOptions options_;
  Catalogue catalogue_;
  Accounts accounts_;
  std::atomic<LoginAnswer> loginAnswer_ = LoginAnswer::RedirectToSettings;
  mutable std::mutex noticeMutex_;
  std::string notice_;
};

}  // namespace veltramoor
