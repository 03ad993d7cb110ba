// The tables of the state file, and how older files come to have them.
#pragma once

#include <stdexcept>

namespace SQLite {
class Database;
}

namespace veltramoor {

/// What is in the file is not a state file, or not any more.
class StateFileDamaged : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

/// The number of the newest schema, kept in the file as PRAGMA user_version.
[[nodiscard]] int stateSchemaVersion();

/// Looks the whole file over (its size is that of a few settings) without changing it, and returns
/// its schema's number, 0 for an empty file. Throws StateFileDamaged, StateFileError for a newer
/// schema, and SQLite::Exception.
[[nodiscard]] int checkStateSchema(SQLite::Database& database);

/// Brings the tables of a checked file up to date, in one transaction with the version number.
void migrateStateSchema(SQLite::Database& database);

}  // namespace veltramoor
