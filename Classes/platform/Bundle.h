// What the program knows of itself and of its device.
#pragma once

#include <filesystem>
#include <string>

namespace veltramoor {

class Bundle {
 public:
  /// The running version ("CFBundleVersion"), for example "0.1.0".
  [[nodiscard]] static std::string version();
  /// The device's model name, for example "Linux x86_64".
  [[nodiscard]] static std::string deviceModel();
  /// The operating system's version as three numbers at most, for example "6.1".
  [[nodiscard]] static std::string systemVersion();
  /// Folder of the application's configuration: `$XDG_CONFIG_HOME/veltramoor`, else under
  /// ~/.config.
  [[nodiscard]] static std::filesystem::path configurationFolder();
  /// Folder of the application's state: `$XDG_DATA_HOME/veltramoor`, else under ~/.local/share.
  [[nodiscard]] static std::filesystem::path stateFolder();
};

}  // namespace veltramoor
