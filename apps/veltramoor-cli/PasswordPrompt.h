// A password from whoever runs a command.
#pragma once

#include <optional>
#include <string>

namespace veltramoor::cli {

/// The first line of standard input. At a terminal it is asked for and not shown while it is typed;
/// a signal that ends the program meanwhile leaves the terminal as it was. Absent when there is no
/// line, not even an empty one.
[[nodiscard]] std::optional<std::string> readPassword();

}  // namespace veltramoor::cli
