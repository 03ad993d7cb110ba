#include "toolkit/Device.h"

#include <algorithm>
#include <cmath>

#include "toolkit/SharedInstances.h"

namespace veltramoor {
namespace {

std::optional<bool> reducedMotionOverride() {
  const QString value = qEnvironmentVariable("VELTRAMOOR_REDUCED_MOTION");
  return value.isEmpty() ? std::nullopt : std::optional(value != QLatin1String("0"));
}

}  // namespace

Device::Device()
    : reducedMotionOverride_(reducedMotionOverride()),
      reducedMotion_(reducedMotionOverride_.value_or(false)) {}

Device& Device::sharedInstance() { return SharedInstances::of<Device>(); }

void Device::setScreenSize(QSizeF size) {
  if (size == screenSize_) {
    return;
  }
  screenSize_ = size;
  emit changed();
}

void Device::setReducedMotion(bool reduced) {
  reduced = reducedMotionOverride_.value_or(reduced);
  if (reduced != reducedMotion_) {
    reducedMotion_ = reduced;
    emit wishesChanged();
  }
}

void Device::setTextScale(double scale) {
  scale = std::isnan(scale) ? 1 : std::clamp(scale, 1.0, kLargestTextScale);
  if (scale != textScale_) {
    textScale_ = scale;
    emit wishesChanged();
  }
}

void Device::setHighContrast(bool high) {
  if (high != highContrast_) {
    highContrast_ = high;
    emit wishesChanged();
  }
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
