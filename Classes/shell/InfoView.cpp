#include "shell/InfoView.h"

#include "platform/Bundle.h"

namespace veltramoor {

void InfoView::updateVersion() {
  versionLbl_ = QString::fromStdString(Bundle::version());
  emit changed();
}

}  // namespace veltramoor
