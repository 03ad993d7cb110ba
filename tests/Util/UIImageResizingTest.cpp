#include "Util/UIImageResizing.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <vector>

namespace veltramoor {
namespace {

using Pixels = std::vector<std::uint8_t>;

TEST(ScaleToSize, ShrinksByAreaAndGrowsByBlending) {
  // Black, white / white, black shrinks to grey; 3 to 2 columns splits the middle one.
  EXPECT_EQ(scaleToSize(
                {2, 2, {0, 0, 0, 255, 255, 255, 255, 255, 255, 255, 255, 255, 0, 0, 0, 255}}, 1, 1)
                .pixels,
            (Pixels{128, 128, 128, 255}));
  EXPECT_EQ(scaleToSize({3, 1, {0, 0, 0, 255, 90, 90, 90, 255, 240, 0, 30, 255}}, 2, 1).pixels,
            (Pixels{30, 30, 30, 255, 190, 30, 50, 255}));
  EXPECT_EQ(scaleToSize({2, 1, {0, 0, 0, 255, 200, 100, 40, 255}}, 4, 1).pixels,
            (Pixels{0, 0, 0, 255, 50, 25, 10, 255, 150, 75, 30, 255, 200, 100, 40, 255}));
  // What is transparent lends no colour.
  EXPECT_EQ(scaleToSize({2, 1, {255, 0, 0, 255, 0, 255, 0, 0}}, 1, 1).pixels,
            (Pixels{255, 0, 0, 128}));
}

TEST(ScaleToSize, AnySizeComesOutExactlyAndAPlainImageStaysPlain) {
  Bitmap plain{123, 77, {}};
  for (int i = 0; i < 123 * 77; ++i) {
    plain.pixels.insert(plain.pixels.end(), {12, 200, 77, 255});
  }
  for (const auto& [width, height] : {std::pair{48, 36}, {1, 1}, {500, 3}, {123, 77}, {7, 4096}}) {
    const Bitmap scaled = scaleToSize(plain, width, height);
    EXPECT_EQ(scaled.width, width);
    EXPECT_EQ(scaled.height, height);
    ASSERT_EQ(scaled.pixels.size(), static_cast<std::size_t>(width * height) * 4);
    for (std::size_t i = 0; i < scaled.pixels.size(); i += 4) {
      ASSERT_EQ(Pixels(&scaled.pixels[i], &scaled.pixels[i] + 4), (Pixels{12, 200, 77, 255}));
    }
  }
}

TEST(ScaleToSize, EmptyAndBrokenImagesAreTransparent) {
  EXPECT_EQ(scaleToSize({}, 2, 1).pixels, Pixels(8, 0));
  EXPECT_EQ(scaleToSize({1000, 1000, {1, 2, 3, 4}}, 1, 2).pixels, Pixels(8, 0));
  EXPECT_THROW(static_cast<void>(scaleToSize({}, 0, 1)), std::invalid_argument);
  EXPECT_THROW(static_cast<void>(scaleToSize({}, 1, 4097)), std::invalid_argument);
}

}  // namespace
}  // namespace veltramoor
