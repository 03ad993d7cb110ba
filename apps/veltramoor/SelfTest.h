// The application's look at itself.
#pragma once

#include <QQmlApplicationEngine>
#include <QQuickWindow>

#include "shell/VeltramoorAppDelegate.h"

namespace veltramoor {

/// Gives the program a state folder of its own and, without a display, draws into memory. To be
/// called before the application object is made.
void prepareSelfTest();

/// Loads every QML file, shows every screen once, and returns how many warnings Qt and QML had
/// about it; each is printed on standard error. Nobody answers its requests.
[[nodiscard]] int runSelfTest(VeltramoorAppDelegate& delegate, QQmlApplicationEngine& engine,
                              QQuickWindow& window);

}  // namespace veltramoor
