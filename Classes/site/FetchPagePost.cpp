#include "site/FetchPagePost.h"

#include "site/HttpRequest.h"

namespace veltramoor {

FetchPagePost::FetchPagePost(std::optional<Url> url, std::string post, Completion completion)
    : FetchPage(std::move(url), std::move(completion)), post_(std::move(post)) {}

void FetchPagePost::fetch() {
  try {
    HttpRequest request(url());
    request.setType("POST");
    request.setPostData(post_);
    request.request();
    failure_ = request.failure();
  } catch (const std::exception&) {
    // No more is asked about a form that was never sent than about one that was refused.
  }
  returnObject_ = true;
}

}  // namespace veltramoor
