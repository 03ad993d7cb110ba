// What the web engine says on the log whoever uses it.
#pragma once

#include <QLatin1String>
#include <QString>

namespace veltramoor {

/// Whether `message` is of no meaning to us: Qt WebEngine 6.4 says so of three of its own QML types
/// when its module is imported, and of the software renderer.
[[nodiscard]] inline bool isEngineMessage(const QString& message) {
  return (message.startsWith(QLatin1String("QWebEngine")) &&
          message.endsWith(QLatin1String("You should not use it as a QML type."))) ||
         message.startsWith(QLatin1String("No suitable graphics backend found"));
}

}  // namespace veltramoor
