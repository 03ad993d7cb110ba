// What the site finds for a query.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "lists/listings/Listing.h"

namespace veltramoor {

class SearchListing final : public Listing {
 public:
  SearchListing();

  /// Asks for `text` from now on, percent-escaped.
  void search(std::string_view text);
  /// The query as it is asked for; absent before the first search and after one for a text outside
  /// ASCII, which the site cannot be asked in.
  [[nodiscard]] const std::optional<std::string>& searchString() const { return searchString_; }

  [[nodiscard]] std::optional<Url> pageUrl(int page) const override;

 private:
  std::optional<std::string> searchString_;
};

}  // namespace veltramoor
