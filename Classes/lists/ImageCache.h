// The icons of a list's rows.
#pragma once

#include <QHash>
#include <QImage>
#include <QString>
#include <functional>
#include <string>

namespace veltramoor {

/// Images by resource name or absolute URL. Main thread only.
class ImageCache {
 public:
  /// `load` starts fetching the image of a URL, whose outcome comes back through `imageReady`.
  explicit ImageCache(std::function<void(const QString& url)> load) : load_(std::move(load)) {
    images_.reserve(30);
  }

  /// The image of that key. A URL seen for the first time gets an empty image and is loaded once. A
  /// resource that does not exist gets "cat_unknown.png", and is looked for again the next time.
  [[nodiscard]] QImage image(const QString& key);
  /// Keeps the image of a URL, scaled to 48 x 36.
  void imageReady(const std::string& url, const QImage& image);

 private:
  std::function<void(const QString&)> load_;
  QHash<QString, QImage> images_;
};

}  // namespace veltramoor
