// What a person is told of a command line that was not understood.
#pragma once

#include <CLI/CLI.hpp>
#include <string>

namespace veltramoor::cli {

/// The name of those checks of an option that say in words what it takes.
inline constexpr const char* kTakes = "takes";

/// One sentence or two for `error`, which parsing ended with. Names the option and what it takes,
/// and never repeats an argument: a password may have been typed there.
[[nodiscard]] std::string usageProblem(CLI::App& app, const CLI::Error& error);

}  // namespace veltramoor::cli
