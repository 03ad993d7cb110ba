// Another user of the site.
#pragma once

#include <optional>
#include <string>

namespace veltramoor {

/// Fields are the texts as the site shows them; unset ones are absent.
struct Friend {
  std::optional<std::string> name;
  std::optional<std::string> type;
  std::optional<std::string> ids;
  std::optional<std::string> avatarUrl;
  std::optional<std::string> date;
};

}  // namespace veltramoor
