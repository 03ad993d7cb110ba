#include "shell/pages/ProfileWebViewController.h"

#include "shell/pages/OpeningList.h"
#include "site/HttpRequestRegExProfileDetails.h"

namespace veltramoor {

ProfileWebViewController::ProfileWebViewController(std::optional<Url> url,
                                                   std::shared_ptr<OpeningList> target)
    : WebViewController(std::move(url), std::move(target)) {
  haveTargetWait();
}

void ProfileWebViewController::viewDidLoad() {
  WebViewController::viewDidLoad();
  // Not in the constructor, where no shared pointer can keep the screen alive for the fetch.
  openAgain();
}

void ProfileWebViewController::openAgain() {
  fetch(url(), httpRequestClass<HttpRequestRegExProfileDetails>());
}

}  // namespace veltramoor
