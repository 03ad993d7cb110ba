#include "site/SessionSetup.h"

#include <exception>

#include "platform/SiteConfiguration.h"
#include "site/HttpRequestRegExUserInfo.h"
#include "site/SiteSession.h"

namespace veltramoor {
namespace {

void setUpSession() {
  HttpRequest language(Url::parse(SiteConfiguration::current().siteAddress("/language/en_EN")));
  language.request();
  HttpRequest settings(Url::parse(settingsAddress()));
  settings.request();
  HttpRequestRegExUserInfo userInfo;
  userInfo.setResponseData(settings.responseData());
  userInfo.request();
}

}  // namespace

void requestAndSetUpSession(HttpRequest& request) noexcept {
  try {
    request.request();
    if (sessionExists(request)) {
      setUpSession();
    }
  } catch (const std::exception&) {
    // A request cut short has no valid response; a session stands whatever became of the name.
  }
}

}  // namespace veltramoor
