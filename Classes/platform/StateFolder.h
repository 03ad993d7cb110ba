// The folder of the state file: who may touch what when.
#pragma once

#include <filesystem>

namespace veltramoor {

/// An advisory lock on a folder. Whoever has a state file of it open shares the lock, and a
/// damaged file is set aside under the exclusive one: SQLite finds a file's journals by their
/// names, so that a process with the old file open would take the new file's journals for its own.
/// Where a folder cannot be locked, everybody goes on without.
class StateFolderLock {
 public:
  explicit StateFolderLock(const std::filesystem::path& folder);
  ~StateFolderLock();
  StateFolderLock(const StateFolderLock&) = delete;
  StateFolderLock& operator=(const StateFolderLock&) = delete;

  /// False, and nothing is held any more, when somebody else holds it exclusively.
  [[nodiscard]] bool share();
  /// False, and nothing is held any more, when somebody else has it.
  [[nodiscard]] bool lockExclusively();
  void release();

 private:
  int descriptor_;
};

/// Missing folders are made for the owner only; existing ones belong to somebody and stay, except
/// the application's own. Throws std::system_error.
void makeStateFolder(const std::filesystem::path& folder);

/// Creates an absent file and takes other people's access to a present one away, without opening
/// it. Throws std::system_error, and StateFileDamaged for a file too short to be one, also for an
/// empty or absent one whose write-ahead file is there.
void makePrivateStateFile(const std::filesystem::path& file);

/// Moves a damaged file and its journals out of the way; returns where the file is kept. Throws
/// std::filesystem::filesystem_error.
[[nodiscard]] std::filesystem::path setStateFileAside(const std::filesystem::path& file);

}  // namespace veltramoor
