// The pages of the demo site. Each function gives one whole HTML page as UTF-8.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "demo/PageFrame.h"

namespace veltramoor {

/// One listing page to render.
struct ListingPage {
  std::string title;
  /// What the search field shows.
  std::string search;
  /// Everything found; the page shows `pageRows` of it from page `number` (from 0) on.
  std::vector<const DemoTorrent*> found;
  std::size_t number = 0;
  std::size_t rows = 30;
  /// What precedes and follows the page number in links to other pages; empty before: no such
  /// links.
  std::string linkBefore;
  std::string linkAfter;
};

[[nodiscard]] std::string listingPage(const PageContext& context, const ListingPage& listing);
[[nodiscard]] std::string detailsPage(const PageContext& context, const DemoTorrent& torrent);
/// `context.account` is set.
[[nodiscard]] std::string settingsPage(const PageContext& context);
/// `problem` is a sentence above the form, or empty.
[[nodiscard]] std::string loginPage(const PageContext& context, std::string_view problem);
[[nodiscard]] std::string homePage(const PageContext& context);
/// `base` precedes the forum's links: "" on the forum's own host, "/forum" on the site's.
[[nodiscard]] std::string forumFrontPage(const PageContext& context, std::string_view base);
[[nodiscard]] std::string forumTopicPage(const PageContext& context, std::string_view base,
                                         int topic);
/// A page with one heading and one sentence.
[[nodiscard]] std::string messagePage(const PageContext& context, std::string_view title,
                                      std::string_view text);
/// Ordinary markup without a torrent, `bytes` long at least.
[[nodiscard]] std::string longPage(const PageContext& context, std::size_t bytes);
/// Ten thousand rows that never become one.
[[nodiscard]] std::string rowFloodPage(const PageContext& context);

}  // namespace veltramoor
