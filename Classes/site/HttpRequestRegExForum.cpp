#include "site/HttpRequestRegExForum.h"

namespace veltramoor {

void HttpRequestRegExForum::request() {
  setOverwriteUserAgent(false);
  HttpRequest::request();
}

}  // namespace veltramoor
