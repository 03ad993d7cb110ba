// What every test program starts with: state and configuration folders of its own, so that no test
// sees or changes those of the person who runs it.
#include <gtest/gtest.h>

#include <cstdlib>

#include "support/TemporaryFolder.h"

int main(int argc, char** argv) {
  testing::InitGoogleTest(&argc, argv);
  const veltramoor::test::TemporaryFolder folder;
  for (const char* name : {"XDG_DATA_HOME", "XDG_CONFIG_HOME", "XDG_CACHE_HOME"}) {
    setenv(name, folder.path().c_str(), 1);
  }
  return RUN_ALL_TESTS();
}
