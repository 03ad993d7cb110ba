// Site torrents as the lists show them.
#pragma once

#include <optional>
#include <vector>

#include "site/HttpRequest.h"
#include "site/PageTrouble.h"
#include "site/Torrent.h"

namespace veltramoor {

/// Fetches one listing page and scrapes its rows.
///
/// A worker thread runs `request()`; the object belongs to that thread.
class HttpRequestRegExTorrent final : public HttpRequest {
 public:
  using HttpRequest::HttpRequest;

  void request() override;

  /// Rows in page order. Absent when the transfer failed, empty when the page had no row or was
  /// given up on.
  [[nodiscard]] const std::optional<std::vector<Torrent>>& torrents() const { return torrents_; }
  /// Why the last `request()` gave no row; absent when it gave one.
  [[nodiscard]] const std::optional<PageTrouble>& trouble() const { return trouble_; }
  /// The rows, moved out.
  [[nodiscard]] std::optional<std::vector<Torrent>> takeTorrents() { return std::move(torrents_); }

 private:
  std::optional<std::vector<Torrent>> torrents_;
  std::optional<PageTrouble> trouble_;
};

}  // namespace veltramoor
