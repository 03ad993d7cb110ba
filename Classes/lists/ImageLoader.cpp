#include "lists/ImageLoader.h"

#include <exception>
#include <utility>

#include "platform/MainThread.h"
#include "platform/UrlLoading.h"

namespace veltramoor {

ImageLoader::ImageLoader(std::optional<Url> url, Completion completion)
    : url_(std::move(url)), completion_(std::move(completion)) {}

void ImageLoader::main() {
  QImage image;
  try {
    if (url_) {
      const UrlResult answer = UrlLoading::sharedInstance().send({.url = *url_});
      if (answer.data) {
        image = QImage::fromData(QByteArray::fromStdString(*answer.data));
      }
    }
  } catch (const std::exception&) {
    image = {};
  }
  // The completion goes to the main thread in any case: its screen must not be released here.
  MainThread::perform([completion = std::exchange(completion_, nullptr), url = url_,
                       image = std::move(image)]() mutable {
    if (!image.isNull()) {
      completion(url->absoluteString(), std::move(image));
    }
  });
}

}  // namespace veltramoor
