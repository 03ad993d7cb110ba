// What the signed-in person has uploaded.
#pragma once

#include "lists/listings/Listing.h"

namespace veltramoor {

class UploadListing final : public Listing {
 public:
  UploadListing();

  /// The user's name stands in it unescaped: a name that no URL may hold gives none.
  [[nodiscard]] std::optional<Url> pageUrl(int page) const override;
};

}  // namespace veltramoor
