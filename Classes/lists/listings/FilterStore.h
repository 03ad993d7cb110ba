// The favourite filters as they are stored.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace veltramoor {

/// The array under the filters key, in the order added; duplicates and empty texts are kept. Main
/// thread only.
class FilterStore {
 public:
  [[nodiscard]] static std::vector<std::string> regexes();
  /// Both return false, and leave what is stored, when the store could not be written; `remove`
  /// also when there is no filter at `index`.
  static bool append(const std::string& regex);
  static bool remove(std::size_t index);
};

}  // namespace veltramoor
