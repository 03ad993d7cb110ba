#include "Util/UIImageResizing.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <stdexcept>

namespace veltramoor {
namespace {

constexpr int kLargest = 4096;
constexpr std::size_t kChannels = 4;

/// A pixel with its colours multiplied by its opacity, so that what is transparent lends no colour.
using Pixel = std::array<float, kChannels>;

/// The source pixels, from `first` on, that make up one target pixel along one axis; sum 1.
struct Share {
  int first = 0;
  std::vector<float> weights;
};

std::vector<Share> shares(int from, int to) {
  const double scale = static_cast<double>(from) / to;
  std::vector<Share> result;
  result.reserve(static_cast<std::size_t>(to));
  for (int i = 0; i < to; ++i) {
    Share share;
    if (scale >= 1) {
      const double begin = i * scale;
      const double end = std::min<double>((i + 1) * scale, from);
      share.first = static_cast<int>(begin);
      for (int source = share.first; source < end; ++source) {
        const double covered = std::min<double>(end, source + 1) - std::max<double>(begin, source);
        share.weights.push_back(static_cast<float>(covered / (end - begin)));
      }
    } else {
      const double centre = std::clamp((i + 0.5) * scale - 0.5, 0.0, from - 1.0);
      share.first = static_cast<int>(centre);
      const auto second = static_cast<float>(centre - share.first);
      share.weights.push_back(1 - second);
      if (second > 0) {
        share.weights.push_back(second);
      }
    }
    result.push_back(std::move(share));
  }
  return result;
}

Pixel premultiplied(const std::uint8_t* bytes) {
  const float alpha = static_cast<float>(bytes[3]) / 255;
  return {static_cast<float>(bytes[0]) * alpha, static_cast<float>(bytes[1]) * alpha,
          static_cast<float>(bytes[2]) * alpha, static_cast<float>(bytes[3])};
}

void store(const Pixel& pixel, std::uint8_t* bytes) {
  const float opacity = pixel[3] / 255;
  for (std::size_t channel = 0; channel < kChannels; ++channel) {
    const float value = channel == 3 ? pixel[3] : (opacity > 0 ? pixel[channel] / opacity : 0.0F);
    bytes[channel] = static_cast<std::uint8_t>(std::clamp(std::lround(value), 0L, 255L));
  }
}

void addWeighted(Pixel& sum, const Pixel& pixel, float weight) {
  for (std::size_t channel = 0; channel < kChannels; ++channel) {
    sum[channel] += pixel[channel] * weight;
  }
}

/// One source row at the target's width.
void scaleRow(const std::uint8_t* row, const std::vector<Share>& columns,
              std::vector<Pixel>& scaled) {
  for (std::size_t x = 0; x < columns.size(); ++x) {
    Pixel sum{};
    const std::uint8_t* source = row + static_cast<std::size_t>(columns[x].first) * kChannels;
    for (const float weight : columns[x].weights) {
      addWeighted(sum, premultiplied(source), weight);
      source += kChannels;
    }
    scaled[x] = sum;
  }
}

}  // namespace

Bitmap scaleToSize(const Bitmap& image, int width, int height) {
  if (width < 1 || width > kLargest || height < 1 || height > kLargest) {
    throw std::invalid_argument("an image is scaled to 1 to 4096 pixels a side");
  }
  const auto columnCount = static_cast<std::size_t>(width);
  Bitmap result{width, height, {}};
  result.pixels.resize(columnCount * static_cast<std::size_t>(height) * kChannels);
  const std::size_t sourceStride =
      image.width > 0 ? static_cast<std::size_t>(image.width) * kChannels : 0;
  if (image.width <= 0 || image.height <= 0 ||
      image.pixels.size() < sourceStride * static_cast<std::size_t>(image.height)) {
    return result;
  }

  const std::vector<Share> columns = shares(image.width, width);
  std::vector<Pixel> sourceRow(columnCount);
  std::vector<Pixel> sum(columnCount);
  std::uint8_t* target = result.pixels.data();
  for (const Share& share : shares(image.height, height)) {
    std::fill(sum.begin(), sum.end(), Pixel{});
    auto source = static_cast<std::size_t>(share.first);
    for (const float weight : share.weights) {
      scaleRow(image.pixels.data() + source++ * sourceStride, columns, sourceRow);
      for (std::size_t x = 0; x < columnCount; ++x) {
        addWeighted(sum[x], sourceRow[x], weight);
      }
    }
    for (const Pixel& pixel : sum) {
      store(pixel, target);
      target += kChannels;
    }
  }
  return result;
}

}  // namespace veltramoor
