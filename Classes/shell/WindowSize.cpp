#include "shell/WindowSize.h"

#include <fmt/format.h>

#include <cstdio>

#include "PreferencesKeys.h"
#include "platform/Preferences.h"

namespace veltramoor {

std::optional<QSize> storedWindowSize() {
  const auto text = Preferences::sharedInstance().string(PreferencesKeys::windowSize);
  int width = 0;
  int height = 0;
  char rest = 0;
  const bool isSize = text && std::sscanf(text->c_str(), "%5dx%5d%c", &width, &height, &rest) == 2;
  return isSize && width >= 320 && width <= 16384 && height >= 300 && height <= 16384
             ? std::optional(QSize(width, height))
             : std::nullopt;
}

void storeWindowSize(QSize size) {
  Preferences& preferences = Preferences::sharedInstance();
  if (storedWindowSize() != size) {
    preferences.setString(PreferencesKeys::windowSize,
                          fmt::format("{}x{}", size.width(), size.height()));
    preferences.synchronize();
  }
}

}  // namespace veltramoor
