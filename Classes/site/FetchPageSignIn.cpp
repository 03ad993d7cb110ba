#include "site/FetchPageSignIn.h"

#include <fmt/format.h>

#include "Util/NSStringEscaping.h"
#include "site/SessionSetup.h"

namespace veltramoor {

FetchPageSignIn::FetchPageSignIn(std::optional<Url> url, std::string username, std::string password,
                                 Completion completion)
    : FetchPage(std::move(url), std::move(completion)),
      username_(std::move(username)),
      password_(std::move(password)) {}

void FetchPageSignIn::fetch() {
  returnObject_ = std::make_shared<HttpRequest>(url());
  returnObject_->setType("POST");
  returnObject_->setPostData(fmt::format("username={}&password={}&act=login&submit=Login",
                                         username_, stringWithPercentEscape(password_)));
  requestAndSetUpSession(*returnObject_);
  failure_ = returnObject_->failure();
}

}  // namespace veltramoor
