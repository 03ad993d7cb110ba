// What the web engine says on the log whoever uses it.
#pragma once

#include <QLatin1String>
#include <QString>

namespace veltramoor {

/// Whether `message` is of no meaning to us: Qt WebEngine 6.4 says so of three of its own QML types
/// when its module is imported, and of the software renderer. The one of 6.8 asks OpenGL and Vulkan
/// who made the graphics card, whatever the window is drawn with, and each answers when there is
/// none; a window that cannot be drawn says more than that. Newer ones have further words for the
/// same, and since 6.9 advise another way to make a profile, which 6.4 does not have.
[[nodiscard]] inline bool isEngineMessage(const QString& message) {
  return (message.startsWith(QLatin1String("QWebEngine")) &&
          message.endsWith(QLatin1String("You should not use it as a QML type."))) ||
         message.startsWith(QLatin1String("No suitable graphics backend found")) ||
         message == QLatin1String("QRhiGles2: Failed to create temporary context") ||
         message == QLatin1String("QRhiGles2: Failed to create context") ||
         message == QLatin1String("This plugin does not support createPlatformVulkanInstance") ||
         message == QLatin1String("QVulkanInstance: Failed to initialize Vulkan") ||
         message == QLatin1String("Unable to detect GPU vendor.") ||
         message == QLatin1String("Failed to create RHI for backend: OpenGL") ||
         message == QLatin1String("GPUInfo not initialized on GpuInfoUpdate") ||
         message.contains(QLatin1String(
             "QML WebEngineProfile: Please use WebEngineProfilePrototype for profile creation"));
}

}  // namespace veltramoor
