#include "platform/StateSchema.h"

#include <SQLiteCpp/SQLiteCpp.h>
#include <fmt/format.h>
#include <sqlite3.h>

#include <array>
#include <string>

#include "Util/PrintableLine.h"
#include "platform/StateFile.h"

namespace veltramoor {
namespace {

/// Entry n leads from schema n to schema n + 1. Never edit one that was released: add another.
/// An array's elements are rows of their own, so that any text can be an element.
constexpr std::array kMigrations{
    R"sql(
      CREATE TABLE preferences (
        key TEXT PRIMARY KEY NOT NULL,
        type TEXT NOT NULL CHECK (type IN ('string', 'number', 'array')),
        value TEXT NOT NULL) WITHOUT ROWID;
      CREATE TABLE preference_elements (
        key TEXT NOT NULL,
        position INTEGER NOT NULL,
        value TEXT NOT NULL,
        PRIMARY KEY (key, position)) WITHOUT ROWID;
      CREATE TABLE cookies (position INTEGER PRIMARY KEY, line TEXT NOT NULL);
    )sql",
};

/// Fails to compile against a file whose tables are not ours.
constexpr std::array kExpectedTables{
    "SELECT key, type, value FROM preferences",
    "SELECT key, position, value FROM preference_elements",
    "SELECT position, line FROM cookies",
};

int storedVersion(SQLite::Database& database) {
  return database.execAndGet("PRAGMA user_version").getInt();
}

/// Whether the tables can be read as ours.
void requireTables(SQLite::Database& database) {
  for (const char* expected : kExpectedTables) {
    try {
      SQLite::Statement(database, expected);
    } catch (const SQLite::Exception& error) {
      if (error.getErrorCode() == SQLITE_ERROR) {
        throw StateFileDamaged("its tables are not there");
      }
      throw;
    }
  }
}

}  // namespace

int stateSchemaVersion() { return static_cast<int>(kMigrations.size()); }

int checkStateSchema(SQLite::Database& database) {
  // One view of the file throughout: another process may be about to create its tables.
  SQLite::Transaction view(database);
  const int version = storedVersion(database);
  if (version > stateSchemaVersion()) {
    throw StateFileError(fmt::format(
        "The settings file {} was written by a newer version of Veltramoor (its format is {}, this "
        "version knows {}). Please update Veltramoor, or move the file away to begin a new one.",
        database.getFilename(), version, stateSchemaVersion()));
  }
  if (const std::string verdict = database.execAndGet("PRAGMA quick_check(1)").getString();
      verdict != "ok") {
    throw StateFileDamaged(printableLine(verdict));
  }
  const bool isEmpty = database.execAndGet("SELECT count(*) FROM sqlite_master").getInt() == 0;
  if (version < 0 || (version == 0 && !isEmpty)) {
    throw StateFileDamaged("it holds something else");
  }
  if (version == stateSchemaVersion()) {
    requireTables(database);
  }
  return version;
}

void migrateStateSchema(SQLite::Database& database) {
  // Locked before the version is read: another process may be about to do the same.
  SQLite::Transaction transaction(database, SQLite::TransactionBehavior::IMMEDIATE);
  for (int step = storedVersion(database); step < stateSchemaVersion(); ++step) {
    database.exec(kMigrations.at(static_cast<std::size_t>(step)));
    database.exec(fmt::format("PRAGMA user_version = {}", step + 1));
  }
  transaction.commit();
}

}  // namespace veltramoor
