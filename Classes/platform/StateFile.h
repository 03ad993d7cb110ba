// The one file that holds preferences and cookies.
#pragma once

#include <filesystem>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>

#include "platform/StateFolder.h"

namespace SQLite {
class Database;
}

namespace veltramoor {

/// The state file cannot be used as it is; `what()` is a plain sentence for the person.
class StateFileError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

/// `$XDG_DATA_HOME/veltramoor/veltramoor.sqlite`, falling back to `~/.local/share`.
[[nodiscard]] std::filesystem::path defaultStateFile();

struct OpenedStateFile {
  /// Held until after the database is closed; null where there is no folder to lock.
  std::unique_ptr<StateFolderLock> lock = nullptr;
  std::unique_ptr<SQLite::Database> database;
  /// A sentence for the person when something was out of order: a corrupt file was set aside (the
  /// sentence names where it is kept), or the folder cannot be written.
  /// Said again to everybody who opens the file later in this process.
  std::optional<std::string> notice = std::nullopt;
  /// False when memory took the file's place.
  bool isPersistent = true;
  /// False when the file can only be read.
  bool isWritable = true;
};

/// Opens or creates the file with mode 0600 (folders it makes have mode 0700), migrates its schema
/// and prepares it for use by two processes at once. `path` absent: in memory. A corrupt file is
/// moved to `<name>.corrupt-<time>`, its journals beside it, and a new one begun (unless somebody
/// has it open). A file that cannot be written is opened for reading, and where there is none to
/// read, memory takes its place; the notice says so. Waits up to 5 s for another program's locks,
/// whoever calls: this belongs to the start, when there is no window yet. The connection goes on
/// doing so; see StateAccess.h for those who must not. Throws StateFileError when the schema is
/// newer than this program.
[[nodiscard]] OpenedStateFile openStateFile(const std::optional<std::filesystem::path>& path);

}  // namespace veltramoor
