#include "lists/ImageCache.h"

#include <algorithm>
#include <cassert>

#include "Util/UIImageResizing.h"
#include "platform/MainThread.h"
#include "toolkit/Image.h"

namespace veltramoor {
namespace {

QImage scaled(const QImage& image, int width, int height) {
  const QImage source = image.convertToFormat(QImage::Format_RGBA8888);
  Bitmap bitmap{source.width(), source.height(), {}};
  bitmap.pixels.reserve(static_cast<std::size_t>(source.width()) *
                        static_cast<std::size_t>(source.height()) * 4);
  for (int y = 0; y < source.height(); ++y) {
    const uchar* line = source.constScanLine(y);
    bitmap.pixels.insert(bitmap.pixels.end(), line, line + source.width() * 4);
  }
  const Bitmap result = scaleToSize(bitmap, width, height);
  QImage drawn(width, height, QImage::Format_RGBA8888);
  for (int y = 0; y < height; ++y) {
    std::copy_n(result.pixels.begin() + static_cast<std::ptrdiff_t>(y) * width * 4, width * 4,
                drawn.scanLine(y));
  }
  return drawn;
}

}  // namespace

QImage ImageCache::image(const QString& key) {
  assert(MainThread::isCurrent());
  if (const auto found = images_.constFind(key); found != images_.cend()) {
    return *found;
  }
  if (key.contains(QLatin1String("http://"))) {
    images_.insert(key, QImage());
    load_(key);
    return {};
  }
  if (QImage resource = imageNamed(key); !resource.isNull()) {
    return *images_.insert(key, std::move(resource));
  }
  const QString unknown = QStringLiteral("cat_unknown.png");
  return *images_.insert(unknown, imageNamed(unknown));
}

void ImageCache::imageReady(const std::string& url, const QImage& image) {
  assert(MainThread::isCurrent());
  images_.insert(QString::fromStdString(url), scaled(image, 48, 36));
}

}  // namespace veltramoor
