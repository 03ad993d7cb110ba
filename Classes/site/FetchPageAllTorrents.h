// Fetches one listing page for a list screen.
#pragma once

#include <optional>
#include <vector>

#include "site/FetchPage.h"
#include "site/PageTrouble.h"
#include "site/Torrent.h"

namespace veltramoor {

/// Delivers the page's rows, absent when the transfer failed; of a page without rows, why it has
/// none.
class FetchPageAllTorrents final
    : public FetchPage<std::optional<std::vector<Torrent>>, PageTrouble> {
 public:
  using FetchPage::FetchPage;

 private:
  void fetch() override;
};

}  // namespace veltramoor
