// What the tests of cookies have in common.
#pragma once

#include <cstdint>
#include <string>

#include "platform/CookieStorage.h"
#include "platform/UrlLoading.h"

namespace veltramoor::test {

inline constexpr std::int64_t kFarFuture = 4'000'000'000;

inline std::string listing(const CookieStorage& store) {
  std::string text;
  for (const Cookie& cookie : store.cookies()) {
    text += cookie.domain + cookie.path + " " + cookie.name + "=" + cookie.value + "\n";
  }
  return text;
}

inline UrlRequest requestTo(const std::string& url) { return {.url = Url::parse(url).value()}; }

}  // namespace veltramoor::test
