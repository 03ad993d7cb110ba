// Compressed bodies, and the pictures that are made of compressed bytes.
#pragma once

#include <string>
#include <string_view>

namespace veltramoor {

[[nodiscard]] std::string gzip(std::string_view text);
/// A gzip stream of some 64 KB that decodes to 64 MiB of blanks in an HTML page.
[[nodiscard]] const std::string& gzipBomb();
/// A PNG of 32 by 32 pixels for a category code: a colour for each group, a shade for each member.
[[nodiscard]] std::string categoryPng(int category);
/// A GIF of 12 by 12 pixels, a small magnet.
[[nodiscard]] std::string magnetGif();

}  // namespace veltramoor
