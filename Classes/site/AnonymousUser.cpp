#include "site/AnonymousUser.h"

#include "site/HttpRequestRegExUserInfo.h"

namespace veltramoor {

void becomeAnonymous() {
  HttpRequestRegExUserInfo request;
  request.setResponseData("0");  // a page that names no user
  request.request();
}

}  // namespace veltramoor
