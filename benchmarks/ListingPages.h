// Pages as the site serves them, to measure with.
#pragma once

#include <cstddef>
#include <string>

namespace veltramoor {

struct ListingPage {
  int rows = 30;
  /// How many rows at the end lack the text "Uploaded".
  int incomplete = 0;
  /// Rows of a kind the row expression does not know: cards without cells.
  bool otherLayout = false;
  /// Names with letters beyond ASCII.
  bool accents = true;
};

/// A listing page of 60 to 110 KB with menus, scripts and a foot. The same argument gives the same
/// page. All names in it are invented.
[[nodiscard]] std::string listingPage(const ListingPage& page = {});

/// Text, links and tables of about `bytes` without any row.
[[nodiscard]] std::string pageWithoutRows(std::size_t bytes);

}  // namespace veltramoor
