#include "platform/CurlGlobal.h"

#include <curl/curl.h>

#include <new>

namespace veltramoor {

void initialiseCurl() {
  // Never cleaned up: handles in other statics may outlive any owner of it.
  static const CURLcode outcome = curl_global_init(CURL_GLOBAL_DEFAULT);
  if (outcome != CURLE_OK) {
    throw std::bad_alloc();
  }
}

}  // namespace veltramoor
