#include "Util/Utf.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace veltramoor {
namespace {

struct Character {
  std::string utf8;
  std::u16string utf16;
};

const std::vector<Character> kCharacters{{"\x7F", u"\x7F"},
                                         {"\xC2\x80", u"\u0080"},
                                         {"\xDF\xBF", u"\u07FF"},
                                         {"\xE0\xA0\x80", u"\u0800"},
                                         {"\xED\x9F\xBF", u"\uD7FF"},
                                         {"\xEF\xBF\xBF", u"\uFFFF"},
                                         {"\xF0\x90\x80\x80", u"\U00010000"},
                                         {"\xF4\x8F\xBF\xBF", u"\U0010FFFF"}};

// Text is converted in blocks; a character may stand anywhere in one or across two.
TEST(Utf, ConvertsACharacterAtEveryPlaceOfALongText) {
  std::u16string reused;
  for (const Character& character : kCharacters) {
    for (std::size_t at = 0; at < 200; ++at) {
      const std::size_t after = (at * 7) % 131;
      const std::string utf8 = std::string(at, 'a') + character.utf8 + std::string(after, 'z');
      const std::u16string utf16 =
          std::u16string(at, u'a') + character.utf16 + std::u16string(after, u'z');
      ASSERT_EQ(utf16FromUtf8(utf8), utf16) << "at " << at;
      ASSERT_EQ(utf8FromUtf16(utf16), utf8) << "at " << at;
      ASSERT_EQ(utf16Length(utf8), utf16.size()) << "at " << at;
      ASSERT_TRUE(isValidUtf8(utf8)) << "at " << at;
      ASSERT_EQ(isAscii(utf8), character.utf8.size() == 1) << "at " << at;
      assignUtf16(reused, utf8);
      ASSERT_EQ(reused, utf16) << "at " << at;
    }
    // Past the size of what is converted in one go.
    std::string dense;
    for (int i = 0; i < 3000; ++i) {
      dense += character.utf8;
    }
    ASSERT_EQ(utf8FromUtf16(utf16FromUtf8(dense)), dense);
  }
}

TEST(Utf, MalformedPartsBecomeReplacementCharacters) {
  struct Case {
    std::string bytes;
    std::u16string expected;
  };
  const std::vector<Case> cases{
      {"\x80", u"\uFFFD"},                                // continuation alone
      {"\xC0\xAF", u"\uFFFD\uFFFD"},                      // overlong
      {"\xE0\x80\xAF", u"\uFFFD\uFFFD\uFFFD"},            // overlong
      {"\xED\xA0\x80", u"\uFFFD\uFFFD\uFFFD"},            // surrogate
      {"\xF4\x90\x80\x80", u"\uFFFD\uFFFD\uFFFD\uFFFD"},  // past the last character
      {"\xE2\x82", u"\uFFFD"},                            // cut off: one part
      {"\xF0\x9F\x98", u"\uFFFD"},
      {"\xE2\x82(", u"\uFFFD("},
      {"\xFF\xFE", u"\uFFFD\uFFFD"}};
  for (const Case& one : cases) {
    for (const std::size_t at : {0U, 61U, 62U, 63U, 64U, 127U}) {
      const std::string text = std::string(at, 'a') + one.bytes + "b";
      const std::u16string expected = std::u16string(at, u'a') + one.expected + u"b";
      EXPECT_EQ(utf16FromUtf8(text), expected) << "at " << at;
      EXPECT_FALSE(isValidUtf8(text)) << "at " << at;
    }
    EXPECT_EQ(utf16FromUtf8(one.bytes), one.expected) << "at the very end";
  }
  EXPECT_EQ(utf8FromUtf16(std::u16string{u'a', 0xD83D, u'b', 0xDE00}),
            "a\xEF\xBF\xBD"
            "b\xEF\xBF\xBD");
}

}  // namespace
}  // namespace veltramoor
