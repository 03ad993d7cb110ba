#include "Util/WithoutCredentials.h"

#include <gtest/gtest.h>

namespace veltramoor {
namespace {

TEST(WithoutCredentialsTest, NothingOfThePasswordIsLeft) {
  const struct {
    const char* url;
    const char* shown;
  } cases[] = {
      {"http://h:1/x", "http://h:1/x"},
      {"http://u:p@h:1/x", "http://h:1/x"},
      {"http://u@h/", "http://h/"},
      {"http://@h/", "http://h/"},
      {"http://u:p@q@h:1/x", "http://h:1/x"},
      {"http://u:12/34@h:1/x", "http://h:1/x"},
      {"http://u:a?b#c/@d/e@h:1/x", "http://h:1/x"},
      {"http://u:x://y@h:1/x", "http://h:1/x"},
      {"http://u:a b\xC3\xA9@[::1]:9091/", "http://[::1]:9091/"},
      {"u:p@h:1/x", "h:1/x"},
      {"", ""},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(withoutCredentials(c.url), c.shown) << c.url;
  }
}

}  // namespace
}  // namespace veltramoor
