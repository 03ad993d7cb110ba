#include "site/FetchPageGeneric.h"

namespace veltramoor {

FetchPageGeneric::FetchPageGeneric(std::optional<Url> url, Completion completion,
                                   HttpRequestClass classType)
    : FetchPage(std::move(url), std::move(completion)), classType_(std::move(classType)) {}

void FetchPageGeneric::fetch() {
  const std::unique_ptr<HttpRequest> request = classType_(url());
  request->request();
  returnObject_ = request->result();
  failure_ = request->failure();
}

}  // namespace veltramoor
