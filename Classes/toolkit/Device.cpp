#include "toolkit/Device.h"

#include <algorithm>

#include "toolkit/SharedInstances.h"

namespace veltramoor {

Device::Device()
    : reducedMotion_(!qEnvironmentVariableIsEmpty("VELTRAMOOR_REDUCED_MOTION") &&
                     qEnvironmentVariable("VELTRAMOOR_REDUCED_MOTION") != QLatin1String("0")) {}

Device& Device::sharedInstance() { return SharedInstances::of<Device>(); }

void Device::setScreenSize(QSizeF size) {
  if (size == screenSize_) {
    return;
  }
  screenSize_ = size;
  emit changed();
}

void Device::setKeyboardShown(bool shown) {
  keyboardShown_ = shown;
  emit keyboardChanged();
  if (shown) {
    emit keyboardWasShown();
  } else {
    emit keyboardWasHidden();
  }
}

void Device::setKeyboardCover(double points) {
  if (points != keyboardCover_) {
    keyboardCover_ = points;
    emit keyboardChanged();
  }
}

bool Device::isPad() const { return std::min(screenSize_.width(), screenSize_.height()) >= 600; }

}  // namespace veltramoor
