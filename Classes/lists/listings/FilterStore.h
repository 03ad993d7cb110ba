// The favourite filters as they are stored.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "platform/ArrayPlace.h"

namespace veltramoor {

/// The array under the filters key, in the order added; duplicates and empty texts are kept.
/// Thread-safe: what two programs add or remove at the same moment is all added and removed.
class FilterStore {
 public:
  [[nodiscard]] static std::vector<std::string> regexes();
  /// All return false, and leave what is stored, when the store could not be written.
  static bool append(const std::string& regex);
  /// Removes the filter that was `regex` at `index` when the caller read them; when others were
  /// added or removed since, the one of this text nearest to there, if there still is one.
  static bool remove(std::size_t index, const std::string& regex);
  /// Inserts a filter that was removed from `place` where that is by now.
  static bool insertAt(const ArrayPlace& place, const std::string& regex);
};

}  // namespace veltramoor
