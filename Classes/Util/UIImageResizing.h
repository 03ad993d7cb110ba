// Image scaling.
#pragma once

#include <cstdint>
#include <vector>

namespace veltramoor {

/// Pixels in rows from the top, 4 bytes each: red, green, blue, alpha, not premultiplied.
struct Bitmap {
  int width = 0;
  int height = 0;
  std::vector<std::uint8_t> pixels;
};

/// The whole image stretched to exactly `width` x `height` (1 to 4096), aspect ratio not kept; each
/// pixel is the area average (shrinking) or linear blend (growing) of what it covers. An empty
/// image gives a transparent one.
[[nodiscard]] Bitmap scaleToSize(const Bitmap& image, int width, int height);

}  // namespace veltramoor
