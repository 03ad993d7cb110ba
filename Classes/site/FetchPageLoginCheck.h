// Finds out whether the site knows the person already.
#pragma once

#include <memory>
#include <optional>

#include "site/FetchPage.h"
#include "site/HttpRequest.h"

namespace veltramoor {

/// Fetches the settings page and, when it shows a session, sets the session up. Delivers the
/// request of the settings page, never null.
class FetchPageLoginCheck final : public FetchPage<std::shared_ptr<HttpRequest>> {
 public:
  FetchPageLoginCheck(std::optional<Url> url, Completion completion);

 private:
  void fetch() override;
};

}  // namespace veltramoor
