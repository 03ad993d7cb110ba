#include "site/FetchPageQuickLoginCheck.h"

#include "site/HttpRequestRegExUserInfo.h"

namespace veltramoor {

FetchPageQuickLoginCheck::FetchPageQuickLoginCheck(std::optional<Url> url, Completion completion)
    : FetchPage(std::move(url), std::move(completion)) {}

void FetchPageQuickLoginCheck::fetch() {
  returnObject_ = std::make_shared<HttpRequestRegExUserInfo>();
  returnObject_->setResponseData("0");  // a page that names no user
  returnObject_->request();
  returnObject_->setResult("anonymous");
}

}  // namespace veltramoor
