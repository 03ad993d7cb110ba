// The names of torrents that were sent.
#pragma once

#include <string>
#include <vector>

namespace veltramoor {

/// The array under the history key: oldest first, at most 50, duplicates kept. Thread-safe: sends
/// that end at the same moment, of two lists or two processes, are both remembered.
class DownloadHistory {
 public:
  static constexpr std::size_t kMaximum = 50;

  [[nodiscard]] static std::vector<std::string> names();
  /// Appends and drops the oldest name when there are more than 50. False when the store could not
  /// be written.
  static bool append(const std::string& name);
  /// Removes the name at `index`, counted from the oldest; nothing when there is none. False when
  /// the store could not be written.
  static bool removeAt(std::size_t index);
};

}  // namespace veltramoor
