// A page as text.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace veltramoor::cli {

/// Largest text that is made of a page, in bytes; a screen of a terminal holds about 2,000.
inline constexpr std::size_t kLongestPageText = std::size_t{256} * 1024;

struct PageText {
  /// Lines in UTF-8, without blanks at their ends and without two empty ones in a row.
  std::string text;
  /// Whether the page went on.
  bool isCut = false;
};

/// What a reader sees of `html` (UTF-8): no scripts, styles or title; blocks and line breaks begin
/// a line, items of a list a line with a hyphen, and cells of a row stand beside each other; a
/// no-break space is a blank. Reads as it goes, so that a large page takes no more memory than its
/// text. What is nested deeper than anybody nests is cut; a tag with very many attributes takes
/// long.
[[nodiscard]] PageText textOfPage(std::string_view html);

}  // namespace veltramoor::cli
