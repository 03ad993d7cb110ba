// The application's look at itself.
#pragma once

#include <QQmlApplicationEngine>
#include <QQuickWindow>
#include <filesystem>

#include "shell/VeltramoorAppDelegate.h"

namespace veltramoor {

/// Gives the program a state folder of its own, for as long as this lives, and without a display
/// has it draw into memory. To be made before the application object.
class SelfTestSurroundings {
 public:
  /// Throws std::filesystem::filesystem_error when the folder cannot be made.
  SelfTestSurroundings();
  ~SelfTestSurroundings();
  SelfTestSurroundings(const SelfTestSurroundings&) = delete;
  SelfTestSurroundings& operator=(const SelfTestSurroundings&) = delete;

 private:
  std::filesystem::path folder_;
};

/// Loads every QML file, shows every screen once, and returns how many warnings Qt and QML had
/// about it; each is printed on standard error. Nobody answers its requests.
[[nodiscard]] int runSelfTest(VeltramoorAppDelegate& delegate, QQmlApplicationEngine& engine,
                              QQuickWindow& window);

}  // namespace veltramoor
