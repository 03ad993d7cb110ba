// The site's 100 best seeded torrents of a category.
#pragma once

#include "lists/listings/RecentListing.h"

namespace veltramoor {

/// One page of up to 100 rows; what follows it are the recent list's pages.
class Top100Listing final : public Listing {
 public:
  Top100Listing();

  [[nodiscard]] std::optional<Url> firstPageUrl() const override;
  [[nodiscard]] std::optional<Url> pageUrl(int page) const override {
    return recent_.pageUrl(page);
  }

 private:
  RecentListing recent_;
};

}  // namespace veltramoor
