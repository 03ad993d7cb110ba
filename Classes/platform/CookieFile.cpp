#include "platform/CookieFile.h"

#include <SQLiteCpp/SQLiteCpp.h>

#include "platform/StateFile.h"

namespace veltramoor {

CookieFile::CookieFile(const std::filesystem::path& stateFile) {
  try {
    database_ = openStateFile(stateFile).database;
  } catch (const std::exception&) {
    // Preferences open the same file and tell the person.
  }
}

CookieFile::~CookieFile() = default;

std::vector<std::string> CookieFile::read() {
  std::vector<std::string> lines;
  try {
    if (database_ != nullptr) {
      SQLite::Statement query(*database_, "SELECT line FROM cookies ORDER BY position");
      while (query.executeStep()) {
        lines.push_back(query.getColumn(0).getString());
      }
    }
  } catch (const SQLite::Exception&) {
    lines.clear();
  }
  return lines;
}

bool CookieFile::write(const std::vector<std::string>& lines) {
  if (database_ == nullptr) {
    return false;
  }
  try {
    // Takes the write lock at once: a read lock could not be raised while the other process writes.
    SQLite::Transaction transaction(*database_, SQLite::TransactionBehavior::IMMEDIATE);
    database_->exec("DELETE FROM cookies");
    SQLite::Statement insertion(*database_, "INSERT INTO cookies(position, line) VALUES(?, ?)");
    for (std::size_t i = 0; i < lines.size(); ++i) {
      insertion.bind(1, static_cast<std::int64_t>(i));
      insertion.bind(2, lines[i]);
      insertion.exec();
      insertion.reset();
    }
    transaction.commit();
    return true;
  } catch (const SQLite::Exception&) {
    return false;
  }
}

}  // namespace veltramoor
