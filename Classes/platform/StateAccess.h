// What everybody who writes the state file has in common.
#pragma once

#include <chrono>
#include <exception>
#include <functional>
#include <string>

namespace SQLite {
class Database;
}

namespace veltramoor {

/// How long the calling thread may wait for another program's lock on the file: 100 ms for the one
/// that draws the window (see MainThread.h), 5 s for every other.
[[nodiscard]] std::chrono::milliseconds lockPatience();

/// From now on a statement that meets another program's lock fails at once: who uses the database
/// waits by `withPatience`.
void waitForNobody(SQLite::Database& database);

/// Runs `attempt` again and again while the file is locked by somebody else, for as long as
/// `lockPatience` says; then throws what it threw last. `attempt` takes the locks of this process
/// that it needs and gives them back, so that none is held while one waits here.
void withPatience(const std::function<void()>& attempt);

/// Why a write was refused, as the end of a sentence for the person.
[[nodiscard]] std::string refusalWords(const std::exception& error);

}  // namespace veltramoor
