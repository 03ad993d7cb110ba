// The command line: read by the table of commands.
#pragma once

#include "CommandTable.h"

namespace veltramoor::cli {

/// What a command line asks for.
struct Request {
  /// What is to run, a part of the table; null where the line was answered (--help, --version) or
  /// not understood, which was then said: the program ends with `status`.
  const Command* command = nullptr;
  int status = 0;
};

/// Reads the line by `program`, whose arguments may stand anywhere on it, and hands each argument
/// to whoever takes it.
[[nodiscard]] Request readCommandLine(const Command& program, int argc, char** argv);

}  // namespace veltramoor::cli
