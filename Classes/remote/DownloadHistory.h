// The names of torrents that were sent.
#pragma once

#include <string>
#include <vector>

#include "platform/ArrayPlace.h"

namespace veltramoor {

/// The array under the history key: oldest first, at most 50, duplicates kept. Thread-safe: sends
/// that end at the same moment, of two lists or two processes, are both remembered.
class DownloadHistory {
 public:
  static constexpr std::size_t kMaximum = 50;

  [[nodiscard]] static std::vector<std::string> names();
  /// Appends and drops the oldest name when there are more than 50. False when the store could not
  /// be written: the caller tells the person, who must learn that the torrent was sent all the
  /// same.
  static bool append(const std::string& name);
  /// Removes the name that was `name` at `index`, counted from the oldest, when the caller read
  /// them; when others came or went since, the one of this name nearest to there, if there still is
  /// one. False when the store could not be written.
  static bool removeAt(std::size_t index, const std::string& name);
  /// Inserts a name that was removed from `place` where that is by now. In a history that sends
  /// have filled up meanwhile the oldest name gives way, as it would have if nothing had been
  /// removed. False when the store could not be written.
  static bool insertAt(const ArrayPlace& place, const std::string& name);
};

}  // namespace veltramoor
