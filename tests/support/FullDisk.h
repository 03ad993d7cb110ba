// A disk without room.
#pragma once

#include <signal.h>
#include <sys/resource.h>

namespace veltramoor::test {

/// No file can grow while one of these lives.
class FullDisk {
 public:
  FullDisk() : signal_(signal(SIGXFSZ, SIG_IGN)) {
    getrlimit(RLIMIT_FSIZE, &limit_);
    const rlimit full{0, limit_.rlim_max};
    setrlimit(RLIMIT_FSIZE, &full);
  }
  ~FullDisk() {
    setrlimit(RLIMIT_FSIZE, &limit_);
    signal(SIGXFSZ, signal_);
  }
  FullDisk(const FullDisk&) = delete;
  FullDisk& operator=(const FullDisk&) = delete;

 private:
  void (*signal_)(int);
  rlimit limit_{};
};

}  // namespace veltramoor::test
