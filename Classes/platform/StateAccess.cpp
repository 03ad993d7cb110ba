#include "platform/StateAccess.h"

#include <SQLiteCpp/SQLiteCpp.h>
#include <sqlite3.h>
#include <unistd.h>

#include <thread>

#include "Util/PrintableLine.h"
#include "platform/MainThread.h"

namespace veltramoor {
namespace {

using Clock = std::chrono::steady_clock;

constexpr std::chrono::milliseconds kPatience{5000};
// A tenth of a second is what a tap may take to be answered.
constexpr std::chrono::milliseconds kPatienceOfWindow{100};

bool isLock(const SQLite::Exception& error) { return error.getErrorCode() == SQLITE_BUSY; }

/// Short, and not in step with other programs that wait for the same lock.
std::chrono::milliseconds pause() { return std::chrono::milliseconds(1 + getpid() % 4); }

}  // namespace

std::chrono::milliseconds lockPatience() {
  return MainThread::isWindowThread() ? kPatienceOfWindow : kPatience;
}

void waitForNobody(SQLite::Database& database) { database.setBusyTimeout(0); }

void withPatience(const std::function<void()>& attempt) {
  const Clock::time_point deadline = Clock::now() + lockPatience();
  while (true) {
    try {
      attempt();
      return;
    } catch (const SQLite::Exception& error) {
      if (!isLock(error) || Clock::now() + pause() > deadline) {
        throw;
      }
    }
    std::this_thread::sleep_for(pause());
  }
}

std::string refusalWords(const std::exception& error) {
  const auto* refusal = dynamic_cast<const SQLite::Exception*>(&error);
  switch (refusal != nullptr ? refusal->getErrorCode() : SQLITE_OK) {
    case SQLITE_FULL:
      return "the disk is full";
    case SQLITE_IOERR:
      return "the disk does not take it";
    case SQLITE_READONLY:
      return "the file is write-protected";
    case SQLITE_BUSY:
      return "another program has the file locked";
    default:
      return printableLine(error.what());
  }
}

}  // namespace veltramoor
