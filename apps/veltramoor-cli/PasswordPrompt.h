// A password from whoever runs a command.
#pragma once

#include <string>

namespace veltramoor::cli {

/// The first line of standard input. At a terminal it is asked for and not shown while it is typed;
/// a signal that ends the program meanwhile leaves the terminal as it was.
[[nodiscard]] std::string readPassword();

}  // namespace veltramoor::cli
