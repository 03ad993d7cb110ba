#include "platform/Bundle.h"

#include <pwd.h>
#include <sys/utsname.h>
#include <unistd.h>

#include <cstdlib>
#include <string_view>

namespace veltramoor {
namespace {

std::filesystem::path homeFolder() {
  if (const char* home = std::getenv("HOME"); home != nullptr && *home == '/') {
    return home;
  }
  if (const passwd* user = getpwuid(geteuid()); user != nullptr && user->pw_dir != nullptr) {
    return user->pw_dir;
  }
  return "/";
}

/// A base folder as the XDG base directory rules have it: a relative value counts as unset.
std::filesystem::path baseFolder(const char* variable, const char* underHome) {
  if (const char* value = std::getenv(variable); value != nullptr && *value == '/') {
    return value;
  }
  return homeFolder() / underHome;
}

utsname systemNames() {
  utsname names{};
  uname(&names);
  return names;
}

}  // namespace

std::string Bundle::version() { return VELTRAMOOR_VERSION; }

std::string Bundle::deviceModel() {
  const utsname names = systemNames();
  return std::string(names.sysname) + " " + names.machine;
}

std::string Bundle::systemVersion() {
  const utsname names = systemNames();
  const std::string_view release = names.release;
  std::string version;
  int numbers = 0;
  std::size_t at = 0;
  while (numbers < 3) {
    std::size_t end = release.find_first_not_of("0123456789", at);
    end = end == std::string_view::npos ? release.size() : end;
    if (end == at) {
      break;
    }
    version.append(numbers == 0 ? "" : ".").append(release.substr(at, end - at));
    ++numbers;
    if (end == release.size() || release[end] != '.') {
      break;
    }
    at = end + 1;
  }
  return version;
}

std::filesystem::path Bundle::configurationFolder() {
  return baseFolder("XDG_CONFIG_HOME", ".config") / "veltramoor";
}

std::filesystem::path Bundle::stateFolder() {
  return baseFolder("XDG_DATA_HOME", ".local/share") / "veltramoor";
}

}  // namespace veltramoor
