#include "site/SessionSetup.h"

#include "platform/SiteConfiguration.h"
#include "site/HttpRequestRegExUserInfo.h"
#include "site/SiteSession.h"

namespace veltramoor {

void setUpSession() {
  HttpRequest language(
      Url::parse("http://" + SiteConfiguration::current().siteHost + "/language/en_EN"));
  language.request();
  HttpRequest settings(Url::parse(settingsAddress()));
  settings.request();
  HttpRequestRegExUserInfo userInfo;
  userInfo.setResponseData(settings.responseData());
  userInfo.request();
}

}  // namespace veltramoor
