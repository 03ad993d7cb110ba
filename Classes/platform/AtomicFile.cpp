#include "platform/AtomicFile.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <string>
#include <system_error>

namespace veltramoor {
namespace {

namespace fs = std::filesystem;

void require(bool done, const fs::path& path) {
  if (!done) {
    throw std::system_error(errno, std::generic_category(), path.string());
  }
}

/// A file beside the target; removed again unless it takes the target's place.
class TemporaryFile {
 public:
  explicit TemporaryFile(const fs::path& target)
      : path_(target.string() + ".XXXXXX"), descriptor_(mkstemp(path_.data())) {
    require(descriptor_ >= 0, path_);
  }
  ~TemporaryFile() {
    close(descriptor_);
    if (!moved_) {
      unlink(path_.c_str());
    }
  }
  TemporaryFile(const TemporaryFile&) = delete;
  TemporaryFile& operator=(const TemporaryFile&) = delete;

  void setMode(mode_t mode) { require(fchmod(descriptor_, mode) == 0, path_); }

  void write(std::string_view content) {
    while (!content.empty()) {
      const ssize_t written = ::write(descriptor_, content.data(), content.size());
      require(written >= 0 || errno == EINTR, path_);
      content.remove_prefix(written > 0 ? static_cast<std::size_t>(written) : 0);
    }
    require(fsync(descriptor_) == 0, path_);
  }

  void moveTo(const fs::path& target) {
    require(rename(path_.c_str(), target.c_str()) == 0, target);
    moved_ = true;
  }

 private:
  std::string path_;
  int descriptor_;
  bool moved_ = false;
};

/// Makes the new name itself durable.
void syncFolder(const fs::path& folder) {
  if (const int descriptor = open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
      descriptor >= 0) {
    fsync(descriptor);
    close(descriptor);
  }
}

}  // namespace

void replaceFile(const fs::path& file, std::string_view content) {
  const fs::path target = fs::weakly_canonical(fs::absolute(file));
  fs::create_directories(target.parent_path());
  TemporaryFile temporary(target);
  struct stat status {};
  if (stat(target.c_str(), &status) == 0) {
    temporary.setMode(status.st_mode & 07777U);
  }
  temporary.write(content);
  temporary.moveTo(target);
  syncFolder(target.parent_path());
}

}  // namespace veltramoor
