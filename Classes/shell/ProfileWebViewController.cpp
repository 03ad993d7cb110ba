#include "shell/ProfileWebViewController.h"

#include "lists/AllListViewController.h"
#include "site/HttpRequestRegExProfileDetails.h"

namespace veltramoor {

ProfileWebViewController::ProfileWebViewController(const std::optional<Url>& url,
                                                   std::shared_ptr<AllListViewController> target)
    : WebViewController(url, std::move(target)), url_(url) {
  targetWaits_ = true;
}

void ProfileWebViewController::viewDidLoad() {
  WebViewController::viewDidLoad();
  // Not in the constructor, where no shared pointer can keep the screen alive for the fetch.
  fetch(url_, httpRequestClass<HttpRequestRegExProfileDetails>());
}

}  // namespace veltramoor
