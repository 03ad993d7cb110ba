#include "shell/overlay/ApplicationWindow.h"

#include "toolkit/SharedInstances.h"

namespace veltramoor {

View* applicationWindow() { return &SharedInstances::of<View>(); }

}  // namespace veltramoor
