#include "Util/NSStringEscaping.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

namespace veltramoor {
namespace {

TEST(PercentEscape, FormValuesKeepOnlyUnreservedCharacters) {
  EXPECT_EQ(stringWithPercentEscape("a b&c=d"), "a%20b%26c%3Dd");
  EXPECT_EQ(stringWithPercentEscape("\xEF\xBF\xBC=,!$&'()*+;@?\n\"<>#\t :/"),
            "%EF%BF%BC%3D%2C%21%24%26%27%28%29%2A%2B%3B%40%3F%0A%22%3C%3E%23%09%20%3A%2F");
  EXPECT_EQ(stringWithPercentEscape("Az09-._~"), "Az09-._~");
  EXPECT_EQ(stringWithPercentEscape("%41[]\\^`{|}\x7F\xC3\xA9"),
            "%2541%5B%5D%5C%5E%60%7B%7C%7D%7F%C3%A9");
  EXPECT_EQ(stringWithPercentEscape(std::string("\0\x01", 2)), "%00%01");
}

TEST(PercentEscape, LinksKeepWhatAUrlMayHold) {
  const std::vector<std::pair<std::string, std::string>> cases{
      {"magnet:?xt=urn:btih:0AF&dn=a+b&tr=udp://t:80/",
       "magnet:?xt=urn:btih:0AF&dn=a+b&tr=udp://t:80/"},
      {"a b\tc", "a%20b%09c"},
      {"100%", "100%25"},
      {"%zz%4%20%e9%", "%25zz%254%20%e9%25"},
      {"#[]<>\"{}|\\^`", "%23%5B%5D%3C%3E%22%7B%7D%7C%5C%5E%60"},
      {"\xC3\xA9;amp", "%C3%A9;amp"}};
  for (const auto& [text, expected] : cases) {
    EXPECT_EQ(stringByAddingPercentEscapes(text), expected) << text;
    // Nothing is escaped twice.
    EXPECT_EQ(stringByAddingPercentEscapes(expected), expected) << text;
  }
  EXPECT_EQ(stringByAddingPercentEscapesInAscii("big buck 100%"), "big%20buck%20100%25");
  EXPECT_EQ(stringByAddingPercentEscapesInAscii("caf\xC3\xA9"), std::nullopt);
}

}  // namespace
}  // namespace veltramoor
