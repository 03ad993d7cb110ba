// The site's category, order and sort codes with their names.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace veltramoor {

/// A name as it is shown and the code that the site knows it by.
struct SettingChoice {
  std::string_view name;
  std::string_view code;
};

struct CategoryGroup {
  std::string_view name;
  std::vector<SettingChoice> members;
};

/// Groups and members in the order in which they are offered; every code is unique. A group's first
/// member covers the whole group.
[[nodiscard]] const std::vector<CategoryGroup>& categoryTable();
[[nodiscard]] const std::vector<SettingChoice>& orderTable();
[[nodiscard]] const std::vector<SettingChoice>& sortTable();

/// "Video, Movies", or "Video" for a whole group; a code that is in no table stands for itself.
[[nodiscard]] std::string categoryInWords(std::string_view code);
/// "by size, ascending"; "" for the newest first, which every list has by itself.
[[nodiscard]] std::string orderInWords(std::string_view order, std::string_view sort);

}  // namespace veltramoor
