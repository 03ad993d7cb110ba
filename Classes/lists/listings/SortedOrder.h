// How the site numbers its orders.
#pragma once

#include <optional>
#include <string>

namespace veltramoor {

/// The order code for a page URL: the stored one, "99" (date) when none is stored; ascending
/// ("asc") is the code that follows it.
[[nodiscard]] std::string sortedOrder(const std::optional<std::string>& orderCode,
                                      const std::optional<std::string>& sort);

}  // namespace veltramoor
