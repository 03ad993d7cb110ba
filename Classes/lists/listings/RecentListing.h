// What is newest on the site.
#pragma once

#include "lists/listings/Listing.h"

namespace veltramoor {

/// A chosen category is listed by the chosen order; over all categories the site knows one order.
class RecentListing : public Listing {
 public:
  RecentListing();

  [[nodiscard]] std::optional<Url> pageUrl(int page) const override;

 protected:
  [[nodiscard]] bool isOrdered() const override { return isNarrowed(); }
};

}  // namespace veltramoor
