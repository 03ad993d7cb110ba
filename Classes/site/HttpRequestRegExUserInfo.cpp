#include "site/HttpRequestRegExUserInfo.h"

#include "Util/Capitalized.h"
#include "Util/Utf.h"
#include "platform/CookieStorage.h"
#include "regex/RegexKitLiteAdditions.h"
#include "site/UserInfo.h"

namespace veltramoor {
namespace {

constexpr std::string_view kUserRegex =
    R"(Username:.*?<td>(.*?)</td>[\s\S]*?Status:.*?<td>(.*?)</td>)";

}  // namespace

void HttpRequestRegExUserInfo::request() {
  // ASCII first, then UTF-8, of which it is a part.
  setResult(responseData() && isValidUtf8(*responseData()) ? responseData() : std::nullopt);
  if (!result()) {
    return;
  }
  const auto elements = captureComponentsMatchedByRegex(*result(), kUserRegex);
  UserInfo& userInfo = UserInfo::sharedInstance();
  if (elements.size() < 2) {
    userInfo.setUsername("Anonymous");
    userInfo.setRatio("N/A");
    userInfo.setIds(std::nullopt);
    return;
  }
  for (const Cookie& cookie : CookieStorage::sharedInstance().cookies()) {
    if (cookie.name == "uid") {
      userInfo.setIds(cookie.value);
    }
  }
  userInfo.setUsername(trimmed(elements[1]));
  userInfo.setRatio(capitalized(elements[2]));
}

}  // namespace veltramoor
