// What every page of the demo site has around its own part.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "demo/Accounts.h"
#include "demo/Catalogue.h"
#include "demo/Faults.h"

namespace veltramoor {

/// Whom a page is for and how it is to look. References outlive the rendering.
struct PageContext {
  const Catalogue& catalogue;
  /// "http://" and the host of absolute links.
  std::string origin;
  std::string movieDatabaseHost;
  std::string sponsoredDownloadHost;
  /// English, or the other language that the site speaks.
  bool english = true;
  /// Null for a visitor.
  const DemoAccount* account = nullptr;
  std::size_t pageRows = 30;
  /// QuoteMagnet, OtherLayout and NoUploaded change the markup; others do nothing here.
  FaultKind layout = FaultKind::None;

  [[nodiscard]] std::string_view say(std::string_view inEnglish, std::string_view other) const {
    return english ? inEnglish : other;
  }
};

/// Everything up to and including the menus. `search` stands in the search field.
[[nodiscard]] std::string pageHead(const PageContext& context, std::string_view title,
                                   std::string_view search = {});
[[nodiscard]] std::string pageFoot(const PageContext& context);

/// Advertising as it stands between the useful parts of a page.
[[nodiscard]] std::string popUnderScript();
[[nodiscard]] std::string popUnderBlock();
[[nodiscard]] std::string sponsoredLink();
[[nodiscard]] std::string downloadBox();
[[nodiscard]] std::string premiumAnchor(const PageContext& context);

}  // namespace veltramoor
