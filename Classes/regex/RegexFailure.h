// ICU's failures as exceptions.
#pragma once

#include <string_view>

namespace veltramoor {

/// For a failure other than at compiling. `status` is ICU's code.
[[noreturn]] void throwUnexpectedRegexError(int status, std::string_view regex);

}  // namespace veltramoor
