// The look of the demo site, written into each page.
#pragma once

#include <string_view>

namespace veltramoor {

[[nodiscard]] std::string_view pageStyle();
[[nodiscard]] std::string_view pageScript();

}  // namespace veltramoor
