#include "platform/StateFolder.h"

#include <fcntl.h>
#include <fmt/chrono.h>
#include <fmt/format.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdint>
#include <ctime>
#include <string>
#include <system_error>

#include "platform/Bundle.h"
#include "platform/StateSchema.h"

namespace veltramoor {
namespace {

namespace fs = std::filesystem;

constexpr mode_t kFileMode = S_IRUSR | S_IWUSR;
constexpr mode_t kFolderMode = S_IRWXU;

/// Files that SQLite keeps beside the main one.
constexpr const char* kCompanions[] = {"-wal", "-journal", "-shm"};

fs::path withSuffix(const fs::path& path, const std::string& suffix) {
  return path.string() + suffix;
}

/// SQLite takes a file of a few bytes for an empty one and would write over it; what is in the
/// write-ahead file of an empty one it would throw away.
void refuseStub(const fs::path& path) {
  constexpr std::uintmax_t kSmallestDatabase = 512;
  const std::uintmax_t size = fs::file_size(path);
  if (size > 0 && size < kSmallestDatabase) {
    throw StateFileDamaged("it is too short");
  }
  std::error_code absent;
  const std::uintmax_t journal = fs::file_size(withSuffix(path, "-wal"), absent);
  // Looked at again: who is just creating the file fills it before its write-ahead file.
  if (size == 0 && !absent && journal > 0 && fs::file_size(path) == 0) {
    throw StateFileDamaged("its main part is missing");
  }
}

/// Whether the lock could be had at once, or locking does not work here at all.
bool tryFlock(int descriptor, int operation) {
  while (descriptor >= 0 && flock(descriptor, operation | LOCK_NB) != 0) {
    if (errno != EINTR) {
      return errno != EWOULDBLOCK;
    }
  }
  return true;
}

}  // namespace

StateFolderLock::StateFolderLock(const fs::path& folder)
    : descriptor_(open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC)) {}

StateFolderLock::~StateFolderLock() {
  if (descriptor_ >= 0) {
    close(descriptor_);
  }
}

bool StateFolderLock::share() { return tryFlock(descriptor_, LOCK_SH); }

bool StateFolderLock::lockExclusively() { return tryFlock(descriptor_, LOCK_EX); }

void StateFolderLock::release() {
  if (descriptor_ >= 0) {
    flock(descriptor_, LOCK_UN);
  }
}

void makeStateFolder(const fs::path& folder) {
  if (folder.empty() || fs::is_directory(folder)) {
    if (folder == Bundle::stateFolder()) {
      chmod(folder.c_str(), kFolderMode);
    }
    return;
  }
  makeStateFolder(folder.parent_path());
  if (mkdir(folder.c_str(), kFolderMode) != 0 && errno != EEXIST) {
    throw std::system_error(errno, std::generic_category(), folder.string());
  }
}

// The file is never opened: closing any descriptor of it would drop the locks that another
// connection of this process holds on it (fcntl(2)). SQLite gives journals the mode of the file.
void makePrivateStateFile(const fs::path& path) {
  if (mknod(path.c_str(), S_IFREG | kFileMode, 0) != 0 && errno != EEXIST) {
    throw std::system_error(errno, std::generic_category(), path.string());
  }
  for (const char* companion : {"", "-wal", "-journal", "-shm"}) {
    const fs::path file = withSuffix(path, companion);
    struct stat status {};
    if (stat(file.c_str(), &status) == 0 && S_ISREG(status.st_mode) &&
        (status.st_mode & (S_IRWXG | S_IRWXO)) != 0) {
      chmod(file.c_str(), kFileMode);
    }
  }
  refuseStub(path);
}

fs::path setStateFileAside(const fs::path& path) {
  const std::string stamp =
      fmt::format("{}.corrupt-{:%Y%m%dT%H%M%SZ}", path.string(), fmt::gmtime(std::time(nullptr)));
  fs::path kept = stamp;
  for (int number = 2; fs::exists(fs::symlink_status(kept)); ++number) {
    kept = fmt::format("{}-{}", stamp, number);
  }
  // The file itself last: a new one must never meet the old one's journals.
  for (const char* companion : kCompanions) {
    std::error_code absent;
    fs::rename(withSuffix(path, companion), withSuffix(kept, companion), absent);
  }
  fs::rename(path, kept);
  return kept;
}

}  // namespace veltramoor
