#include "shell/ApplicationWindow.h"

namespace veltramoor {

View* applicationWindow() {
  static View window;
  return &window;
}

}  // namespace veltramoor
