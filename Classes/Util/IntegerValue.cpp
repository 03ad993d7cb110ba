#include "Util/IntegerValue.h"

#include <algorithm>
#include <charconv>

namespace veltramoor {

int integerValue(std::string_view text) {
  text.remove_prefix(std::min(text.find_first_not_of(" \t\r\n"), text.size()));
  if (text.starts_with('+')) {
    text.remove_prefix(1);
  }
  int value = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
  return error == std::errc() ? value : 0;
}

}  // namespace veltramoor
