// The cookies that all tests of one program share.
#pragma once

#include "platform/CookieStorage.h"

namespace veltramoor::test {

/// For the start and the end of a test that counts them.
inline void eraseSharedCookies() {
  CookieStorage& store = CookieStorage::sharedInstance();
  for (const Cookie& cookie : store.cookies()) {
    store.erase({cookie.domain});
  }
}

}  // namespace veltramoor::test
