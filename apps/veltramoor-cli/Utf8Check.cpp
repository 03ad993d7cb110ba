#include "Commands.h"
#include "Util/Utf.h"

namespace veltramoor::cli {

CLI::Validator utf8() {
  return {[](const std::string& value) {
            return std::string(isValidUtf8(value) ? "" : "is not text in UTF-8");
          },
          "", "UTF-8"};
}

}  // namespace veltramoor::cli
