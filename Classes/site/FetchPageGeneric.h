// Fetches one page as text with a request class of the caller's choice.
#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "site/FetchPage.h"
#include "site/HttpRequest.h"

namespace veltramoor {

/// Makes a request of one class for a URL.
using HttpRequestClass = std::function<std::unique_ptr<HttpRequest>(std::optional<Url>)>;

/// The class `Request`, for operations that are told which one to use.
template <typename Request>
[[nodiscard]] HttpRequestClass httpRequestClass() {
  return [](std::optional<Url> url) { return std::make_unique<Request>(std::move(url)); };
}

/// Delivers the request's `result`; absent when the transfer failed.
class FetchPageGeneric final : public FetchPage<std::optional<std::string>> {
 public:
  FetchPageGeneric(std::optional<Url> url, Completion completion, HttpRequestClass classType);

 private:
  void fetch() override;

  HttpRequestClass classType_;
};

}  // namespace veltramoor
