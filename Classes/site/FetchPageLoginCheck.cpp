#include "site/FetchPageLoginCheck.h"

#include "site/SessionSetup.h"

namespace veltramoor {

FetchPageLoginCheck::FetchPageLoginCheck(std::optional<Url> url, Completion completion)
    : FetchPage(std::move(url), std::move(completion)) {}

void FetchPageLoginCheck::fetch() {
  returnObject_ = std::make_shared<HttpRequest>(url());
  requestAndSetUpSession(*returnObject_);
  failure_ = returnObject_->failure();
}

}  // namespace veltramoor
