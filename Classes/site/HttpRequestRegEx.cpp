#include "site/HttpRequestRegEx.h"

#include "regex/RegexKitLiteAdditions.h"

namespace veltramoor {

HttpRequestRegEx::HttpRequestRegEx(std::optional<Url> url, std::string regex)
    : HttpRequest(std::move(url)), regex_(std::move(regex)) {}

void HttpRequestRegEx::request() {
  elements_.clear();
  HttpRequest::request();
  if (!result()) {
    return;
  }
  std::vector<std::string> captures = captureComponentsMatchedByRegex(*result(), regex_);
  if (captures.size() > 1) {
    setResult(captures[1]);
  }
  elements_ = std::move(captures);
}

}  // namespace veltramoor
