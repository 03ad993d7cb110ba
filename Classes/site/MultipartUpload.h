// The body of an upload, made by whoever knows what is uploaded.
#pragma once

#include <string>

namespace veltramoor {

class MultipartUpload {
 public:
  virtual ~MultipartUpload() = default;

  /// The whole body, its parts separated by `kMultipartBoundary`.
  [[nodiscard]] virtual std::string getData() = 0;
};

}  // namespace veltramoor
