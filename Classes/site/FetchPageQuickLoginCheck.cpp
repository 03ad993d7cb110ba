#include "site/FetchPageQuickLoginCheck.h"

#include <exception>

#include "site/HttpRequestRegExUserInfo.h"

namespace veltramoor {

FetchPageQuickLoginCheck::FetchPageQuickLoginCheck(std::optional<Url> url, Completion completion)
    : FetchPage(std::move(url), std::move(completion)) {}

void FetchPageQuickLoginCheck::fetch() {
  returnObject_ = std::make_shared<HttpRequestRegExUserInfo>();
  returnObject_->setResponseData("0");  // a page that names no user
  try {
    returnObject_->request();
  } catch (const std::exception&) {
    // The choice stands whatever became of the name.
  }
  returnObject_->setResult("anonymous");
}

}  // namespace veltramoor
