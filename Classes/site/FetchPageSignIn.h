// Signs in to the site.
#pragma once

#include <memory>
#include <optional>
#include <string>

#include "site/FetchPage.h"
#include "site/HttpRequest.h"

namespace veltramoor {

/// Posts the login form and, when the answer shows a session, sets the session up. The user name
/// goes into the form as it was typed, the password percent-escaped. Delivers the request of the
/// form, never null.
class FetchPageSignIn final : public FetchPage<std::shared_ptr<HttpRequest>> {
 public:
  FetchPageSignIn(std::optional<Url> url, std::string username, std::string password,
                  Completion completion);

 private:
  void fetch() override;

  std::string username_;
  std::string password_;
};

}  // namespace veltramoor
