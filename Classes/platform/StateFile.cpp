#include "platform/StateFile.h"

#include <SQLiteCpp/SQLiteCpp.h>
#include <fmt/format.h>
#include <sqlite3.h>
#include <unistd.h>

#include <chrono>
#include <functional>
#include <map>
#include <mutex>
#include <stdexcept>
#include <thread>
#include <utility>

#include "Util/NSStringEscaping.h"
#include "Util/PrintableLine.h"
#include "platform/Bundle.h"
#include "platform/StateFolder.h"
#include "platform/StateSchema.h"

namespace veltramoor {
namespace {

namespace fs = std::filesystem;
using DatabasePointer = std::unique_ptr<SQLite::Database>;

constexpr int kBusyTimeoutMs = 5000;
/// How long to wait for others to be done with a damaged file.
constexpr std::chrono::seconds kDamagedFileTimeout{2};

bool isDamage(const SQLite::Exception& error) {
  return error.getErrorCode() == SQLITE_CORRUPT || error.getErrorCode() == SQLITE_NOTADB;
}

/// Changing the journal's mode does not wait for other connections as other statements do.
void setJournalMode(SQLite::Database& database) {
  const auto deadline =
      std::chrono::steady_clock::now() + std::chrono::milliseconds(kBusyTimeoutMs);
  while (true) {
    try {
      // Write-ahead: readers never wait for a writer, and a write is one sync of one file.
      database.execAndGet("PRAGMA journal_mode = WAL");
      return;
    } catch (const SQLite::Exception& error) {
      if (error.getErrorCode() != SQLITE_BUSY || std::chrono::steady_clock::now() > deadline) {
        throw;
      }
    }
    std::this_thread::sleep_for(std::chrono::milliseconds(5));
  }
}

/// Runs `step`, telling damage from every other failure.
DatabasePointer tellingDamage(const std::function<DatabasePointer()>& step) {
  try {
    return step();
  } catch (const SQLite::Exception& error) {
    if (isDamage(error)) {
      // It may repeat what is in the file.
      throw StateFileDamaged(printableLine(error.what()));
    }
    throw;
  }
}

/// What is to be set aside must stay as it is: closing would fold the write-ahead file into it.
void foldBackWhenClosing(SQLite::Database& database, bool fold) {
  sqlite3_db_config(database.getHandle(), SQLITE_DBCONFIG_NO_CKPT_ON_CLOSE, fold ? 0 : 1, nullptr);
}

DatabasePointer openForWriting(const fs::path& path) {
  makePrivateStateFile(path);
  return tellingDamage([&path] {
    auto database =
        std::make_unique<SQLite::Database>(path.string(), SQLite::OPEN_READWRITE, kBusyTimeoutMs);
    foldBackWhenClosing(*database, false);
    const int version = checkStateSchema(*database);
    if (sqlite3_db_readonly(database->getHandle(), "main") == 1) {
      throw std::runtime_error("it is write-protected");
    }
    setJournalMode(*database);
    database->exec("PRAGMA synchronous = FULL");
    if (version < stateSchemaVersion()) {
      migrateStateSchema(*database);
    }
    foldBackWhenClosing(*database, true);
    return database;
  });
}

DatabasePointer openForReading(const std::string& name, int flags) {
  return tellingDamage([&name, flags] {
    auto database =
        std::make_unique<SQLite::Database>(name, SQLite::OPEN_READONLY | flags, kBusyTimeoutMs);
    if (checkStateSchema(*database) != stateSchemaVersion()) {
      throw std::runtime_error("its format is too old to be used unchanged");
    }
    return database;
  });
}

DatabasePointer openInMemory() {
  auto database =
      std::make_unique<SQLite::Database>(":memory:", SQLite::OPEN_READWRITE | SQLite::OPEN_CREATE);
  migrateStateSchema(*database);
  return database;
}

/// When nothing can be written: the file as it is, else nothing but memory.
OpenedStateFile openWithoutWriting(const fs::path& path, const std::string& reason) {
  // The second way is for a folder where the companions of a write-ahead file cannot be made.
  const std::string unchanging = "file:" + stringWithPercentEscape(path.string()) + "?immutable=1";
  for (const auto& [name, flags] :
       {std::pair{path.string(), 0}, std::pair{unchanging, SQLite::OPEN_URI}}) {
    try {
      return {.database = openForReading(name, flags),
              .notice = fmt::format(
                  "The settings file {} cannot be written ({}). Changes to settings and "
                  "signing in will not be kept.",
                  path.string(), reason),
              .isWritable = false};
    } catch (const StateFileError&) {
      throw;
    } catch (const std::exception&) {
      continue;
    }
  }
  return {.database = openInMemory(),
          .notice = fmt::format(
              "The settings file {} cannot be used ({}). Settings and signing in last only "
              "until Veltramoor closes.",
              path.string(), reason),
          .isPersistent = false};
}

/// What this process was told when it set files aside, by their paths: whoever opens a damaged file
/// first replaces it, and that may be one who has nobody to tell.
class Notices {
 public:
  void add(const fs::path& path, const std::string& notice) {
    const std::lock_guard lock(mutex_);
    notices_[path] = notice;
  }
  std::optional<std::string> about(const fs::path& path) {
    const std::lock_guard lock(mutex_);
    const auto found = notices_.find(path);
    return found == notices_.end() ? std::nullopt : std::optional(found->second);
  }

  static Notices& sharedInstance() {
    static Notices instance;
    return instance;
  }

 private:
  std::mutex mutex_;
  std::map<fs::path, std::string> notices_;
};

/// Sets a damaged file aside and begins a new one. The lock is held exclusively.
OpenedStateFile replaceDamaged(const fs::path& path) {
  std::string notice;
  try {
    // Somebody else may have put a new one in its place meanwhile.
    return {.database = openForWriting(path), .notice = Notices::sharedInstance().about(path)};
  } catch (const StateFileDamaged& damage) {
    const fs::path kept = setStateFileAside(path);
    notice = fmt::format("The file of settings and cookies was damaged ({}). It is kept as {}.",
                         damage.what(), kept.string());
  }
  Notices::sharedInstance().add(path, notice);
  try {
    return {.database = openForWriting(path), .notice = notice + " A new one was begun."};
  } catch (const std::exception& error) {
    OpenedStateFile opened = openWithoutWriting(path, printableLine(error.what()));
    opened.notice = notice + " " + opened.notice.value_or("");
    return opened;
  }
}

/// Not in step with others that are after the same.
void pauseOutOfStep() {
  std::this_thread::sleep_for(std::chrono::milliseconds(5 + getpid() % 7 * 3));
}

/// Waits for whoever holds the lock exclusively, which ours do only while they replace a file.
/// Throws std::runtime_error when that takes too long.
void share(StateFolderLock& lock) {
  const auto deadline = std::chrono::steady_clock::now() + kDamagedFileTimeout;
  while (!lock.share()) {
    if (std::chrono::steady_clock::now() > deadline) {
      throw std::runtime_error("another program has its folder locked");
    }
    pauseOutOfStep();
  }
}

/// Opens the file, or replaces it once nobody else has it open.
OpenedStateFile openOrReplace(const fs::path& path, StateFolderLock& lock) {
  const auto deadline = std::chrono::steady_clock::now() + kDamagedFileTimeout;
  while (true) {
    share(lock);
    try {
      return {.database = openForWriting(path), .notice = Notices::sharedInstance().about(path)};
    } catch (const StateFileDamaged& damage) {
      lock.release();
      if (lock.lockExclusively()) {
        return replaceDamaged(path);
      }
      if (std::chrono::steady_clock::now() > deadline) {
        throw std::runtime_error(
            fmt::format("it is damaged ({}), and another program has it open", damage.what()));
      }
    }
    pauseOutOfStep();
  }
}

}  // namespace

fs::path defaultStateFile() { return Bundle::stateFolder() / "veltramoor.sqlite"; }

OpenedStateFile openStateFile(const std::optional<fs::path>& path) {
  if (!path) {
    return {.database = openInMemory(), .isPersistent = false};
  }
  const fs::path file = fs::absolute(*path);
  try {
    makeStateFolder(file.parent_path());
    auto lock = std::make_unique<StateFolderLock>(file.parent_path());
    OpenedStateFile opened = openOrReplace(file, *lock);
    share(*lock);
    opened.lock = std::move(lock);
    return opened;
  } catch (const StateFileError&) {
    throw;
  } catch (const std::exception& error) {
    return openWithoutWriting(file, printableLine(error.what()));
  }
}

}  // namespace veltramoor
