// Fetches one remote image in the background.
#pragma once

#include <QImage>
#include <functional>
#include <optional>
#include <string>

#include "platform/OperationQueue.h"
#include "platform/Url.h"

namespace veltramoor {

/// Calls back on the main thread with the URL's text and the image; not at all when the URL yields
/// no image.
class ImageLoader final : public Operation {
 public:
  using Completion = std::function<void(std::string url, QImage image)>;

  ImageLoader(std::optional<Url> url, Completion completion);
  void main() override;

 private:
  std::optional<Url> url_;
  Completion completion_;
};

}  // namespace veltramoor
