// Where the cookies are kept between runs.
#pragma once

#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "platform/StateFolder.h"

namespace SQLite {
class Database;
}

namespace veltramoor {

/// The cookie lines in the state file. Used by one thread at a time; two processes may share the
/// file: each writes only what it changed itself, and the later change of one cookie stands.
class CookieFile {
 public:
  /// Throws nothing: see `write` for a file that cannot be had.
  explicit CookieFile(const std::filesystem::path& stateFile);
  ~CookieFile();
  CookieFile(const CookieFile&) = delete;
  CookieFile& operator=(const CookieFile&) = delete;

  /// In the order in which they were written; empty when the file cannot be used.
  [[nodiscard]] std::vector<std::string> read();
  /// Makes the changes that lead from `known`, what the caller last read or wrote, to `lines`, in
  /// one transaction. Waits for nobody. Throws std::exception when the disk refused or somebody
  /// else has the file locked, and the old lines stand.
  void write(const std::vector<std::string>& known, const std::vector<std::string>& lines);

  /// Why nothing that is written will last, in a sentence for the person; absent when it will.
  [[nodiscard]] const std::optional<std::string>& problem() const { return problem_; }

 private:
  std::optional<std::string> problem_;
  // Released after the database is closed.
  std::unique_ptr<StateFolderLock> lock_;
  std::unique_ptr<SQLite::Database> database_;
};

}  // namespace veltramoor
