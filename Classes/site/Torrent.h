// One row of a listing page.
#pragma once

#include <optional>
#include <string>

namespace veltramoor {

/// Texts as the page words them, UTF-8; nothing is parsed into numbers.
struct Torrent {
  std::string name;
  /// Path of the details page as written in the page, usually "/torrent/...".
  std::string detailsUrl;
  /// The magnet link, percent-escaped; HTML entities in it stand undecoded.
  std::string downloadUrl;
  /// The category's icon: its number followed by ".png".
  std::string type;
  std::string date;
  std::string size;
  /// Seeders and leechers.
  std::string up;
  std::string down;
  bool isDownloaded = false;
  /// Nothing fills these yet; rows draw `wait` when it is there.
  std::optional<std::string> wait;
  std::optional<std::string> ratio;
  std::optional<std::string> active;
  bool isNew = false;

  friend bool operator==(const Torrent&, const Torrent&) = default;
};

}  // namespace veltramoor
