// Where an element stood in an array that others change, too.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace veltramoor {

/// The index of an element and what stood beside it, absent at the ends.
struct ArrayPlace {
  /// The place of the element at `index`, which must be one of `elements`.
  [[nodiscard]] static ArrayPlace of(const std::vector<std::string>& elements, std::size_t index);

  /// The index at which an element of this place is to be inserted into `elements`, which may have
  /// changed: between its neighbours or, with one of them gone, beside the other; with both gone as
  /// near to its index as can be. Of several such places it is the one nearest to its index.
  [[nodiscard]] std::size_t in(const std::vector<std::string>& elements) const;

  std::size_t index = 0;
  std::optional<std::string> before = {};
  std::optional<std::string> after = {};
};

}  // namespace veltramoor
