// A page and the captures of one expression in it.
#pragma once

#include <string>
#include <vector>

#include "site/HttpRequest.h"

namespace veltramoor {

/// After a match `result` is capture 1 and `elements` holds all captures, the whole match first;
/// without one `result` stays the full page and `elements` is empty.
class HttpRequestRegEx final : public HttpRequest {
 public:
  HttpRequestRegEx(std::optional<Url> url, std::string regex);

  void request() override;

  [[nodiscard]] const std::string& regex() const { return regex_; }
  [[nodiscard]] const std::vector<std::string>& elements() const { return elements_; }

 private:
  std::string regex_;
  std::vector<std::string> elements_;
};

}  // namespace veltramoor
