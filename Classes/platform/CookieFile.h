// Where the cookies are kept between runs.
#pragma once

#include <filesystem>
#include <memory>
#include <string>
#include <vector>

namespace SQLite {
class Database;
}

namespace veltramoor {

/// The cookie lines in the state file. Never throws: cookies that cannot be kept are no reason for
/// a request to fail. Used by one thread at a time; two processes may share the file, and the later
/// writer's list stands.
class CookieFile {
 public:
  explicit CookieFile(const std::filesystem::path& stateFile);
  ~CookieFile();
  CookieFile(const CookieFile&) = delete;
  CookieFile& operator=(const CookieFile&) = delete;

  /// In the order in which they were written; empty when the file cannot be used.
  [[nodiscard]] std::vector<std::string> read();
  /// Replaces all lines in one transaction; false when the disk refused, and the old lines stand.
  bool write(const std::vector<std::string>& lines);

 private:
  std::unique_ptr<SQLite::Database> database_;
};

}  // namespace veltramoor
