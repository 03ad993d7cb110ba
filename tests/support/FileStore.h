// A store whose disk can be full.
#pragma once

#include "platform/Preferences.h"
#include "support/FullDisk.h"
#include "support/TemporaryFolder.h"

namespace veltramoor::test {

/// The application's store, in a file of its own, for as long as one of these lives.
class FileStore {
 public:
  FileStore() { Preferences::setSharedInstance(&preferences_); }
  ~FileStore() { Preferences::setSharedInstance(before_); }
  FileStore(const FileStore&) = delete;
  FileStore& operator=(const FileStore&) = delete;

  Preferences* operator->() { return &preferences_; }

 private:
  Preferences* before_ = &Preferences::sharedInstance();
  const TemporaryFolder folder_;
  Preferences preferences_{folder_ / "state.sqlite"};
};

}  // namespace veltramoor::test
