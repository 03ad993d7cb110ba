#include "Util/MBBase64.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

namespace veltramoor {
namespace {

TEST(Base64, EncodesAndDecodes) {
  // RFC 4648 section 10, and the alphabet's last two characters.
  const std::vector<std::pair<std::string, std::string>> cases{{"", ""},
                                                               {"f", "Zg=="},
                                                               {"fo", "Zm8="},
                                                               {"foo", "Zm9v"},
                                                               {"foob", "Zm9vYg=="},
                                                               {"fooba", "Zm9vYmE="},
                                                               {"foobar", "Zm9vYmFy"},
                                                               {"hello", "aGVsbG8="},
                                                               {"\xFB\xFF\xBF", "+/+/"}};
  for (const auto& [bytes, text] : cases) {
    EXPECT_EQ(base64Encoding(bytes), text);
    EXPECT_EQ(dataWithBase64EncodedString(text), bytes);
  }
  std::string all;
  for (int i = 0; i < 1000; ++i) {
    all += static_cast<char>(i * 37);
    EXPECT_EQ(dataWithBase64EncodedString(base64Encoding(all)), all);
  }
  EXPECT_EQ(base64Encoding(all).find('\n'), std::string::npos);
}

TEST(Base64, SkipsWhiteSpaceAndPaddingAnywhere) {
  EXPECT_EQ(dataWithBase64EncodedString("aGV\r\nsbG8="), "hello");
  EXPECT_EQ(dataWithBase64EncodedString("=a GV=s\tb\v\fG8"), "hello");
  EXPECT_EQ(dataWithBase64EncodedString(" =\n"), "");
}

TEST(Base64, RefusesWhatIsNoBase64) {
  for (const char* text : {"aGVs*", "aGVsb", "a", "aGV-", "aGV_", "aGVsb\xC3\xA9"}) {
    EXPECT_EQ(dataWithBase64EncodedString(text), std::nullopt) << text;
  }
  EXPECT_EQ(dataWithBase64EncodedString(std::string_view("Zg\0=", 4)), std::nullopt);
  EXPECT_THROW(static_cast<void>(dataWithBase64EncodedString(std::nullopt)), std::invalid_argument);
}

}  // namespace
}  // namespace veltramoor
