// The words that the demo site's content is made of.
#pragma once

#include <cstdint>
#include <span>
#include <string_view>

namespace veltramoor {

/// A leaf of the site's category table.
struct DemoCategory {
  int code = 0;
  std::string_view label;
  /// A film or programme that the movie database may know.
  bool film = false;
  /// Name patterns: %T title, %A artist or author, %P place, %Y year, %V version, %N two digits.
  std::span<const std::string_view> patterns;
  /// The smallest size in KiB and how often it may double.
  std::uint64_t smallestKiB = 0;
  unsigned doublings = 0;
};

struct DemoGroup {
  /// A multiple of 100.
  int code = 0;
  std::string_view label;
};

[[nodiscard]] std::span<const DemoGroup> demoGroups();
/// In order of codes. Every leaf code that the application offers is here.
[[nodiscard]] std::span<const DemoCategory> demoCategories();
/// Null when no category has that code.
[[nodiscard]] const DemoCategory* demoCategory(int code);
/// The label of a leaf or a group; "All" for 0, "" for an unknown code.
[[nodiscard]] std::string_view demoCategoryLabel(int code);

[[nodiscard]] std::span<const std::string_view> demoAdjectives();
[[nodiscard]] std::span<const std::string_view> demoNouns();
[[nodiscard]] std::span<const std::string_view> demoPlaces();
[[nodiscard]] std::span<const std::string_view> demoPeople();
/// What some names end in: brackets, quotes, markup, other scripts.
[[nodiscard]] std::span<const std::string_view> demoOddEndings();
[[nodiscard]] std::span<const std::string_view> demoUploaders();

}  // namespace veltramoor
