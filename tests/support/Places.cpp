#include "support/Places.h"

// The one source that is compiled with paths: all others are the same for every preset.
namespace veltramoor::test {

std::string program(const std::string& name) { return VELTRAMOOR_BIN_DIR "/" + name; }

}  // namespace veltramoor::test
