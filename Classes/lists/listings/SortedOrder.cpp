#include "lists/listings/SortedOrder.h"

#include "Util/IntegerValue.h"

namespace veltramoor {

std::string sortedOrder(const std::optional<std::string>& orderCode,
                        const std::optional<std::string>& sort) {
  const std::string order = orderCode.value_or("").empty() ? "99" : *orderCode;
  return sort == "asc" ? std::to_string(integerValue(order) + 1) : order;
}

}  // namespace veltramoor
