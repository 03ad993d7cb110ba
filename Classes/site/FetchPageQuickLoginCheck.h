// The anonymous choice, shaped like a session check.
#pragma once

#include <memory>
#include <optional>

#include "site/FetchPage.h"
#include "site/HttpRequest.h"

namespace veltramoor {

/// Makes the shared UserInfo the anonymous one, without any exchange. Delivers a request whose
/// result is "anonymous".
class FetchPageQuickLoginCheck final : public FetchPage<std::shared_ptr<HttpRequest>> {
 public:
  /// The URL is not used.
  FetchPageQuickLoginCheck(std::optional<Url> url, Completion completion);

 private:
  void fetch() override;
};

}  // namespace veltramoor
