#include "regex/Utf16Scan.h"

#include <gtest/gtest.h>

#include <string>

namespace veltramoor {
namespace {

// Longer than two of the blocks that are compared at once, and no whole number of them.
constexpr std::size_t kLength = 75;

TEST(Utf16Scan, FindsEachLineEndWhereverItStandsInABlock) {
  const std::u16string_view lineEnds = u"\n\v\f\r\u0085\u2028\u2029";
  const std::u16string_view others = u"\t\x0E\u0084\u0086\u2027\u202A\u0A00\u0D00\uFFFF";
  for (std::size_t at = 0; at < kLength; ++at) {
    for (const char16_t unit : lineEnds) {
      SCOPED_TRACE(testing::Message() << std::hex << +unit << std::dec << " at " << at);
      std::u16string text(kLength, u'x');
      text[at] = unit;
      EXPECT_TRUE(isLineEnd(unit));
      EXPECT_EQ(findLineEnd(text, 0, kLength), at);
      EXPECT_EQ(findLineEnd(text, at, kNotFound), at);
      EXPECT_EQ(findLineEnd(text, at + 1, kLength), kNotFound);
      EXPECT_EQ(findLineEnd(text, 0, at), kNotFound) << "the limit is not looked at";
      EXPECT_EQ(lineStart(text, kLength, 0), at + 1);
      EXPECT_EQ(lineStart(text, at, 0), 0U);
    }
    for (const char16_t unit : others) {
      std::u16string text(kLength, u'x');
      text[at] = unit;
      EXPECT_FALSE(isLineEnd(unit));
      EXPECT_EQ(findLineEnd(text, 0, kLength), kNotFound) << std::hex << +unit;
    }
  }
}

TEST(Utf16Scan, FindsALiteralWhereverItStandsInABlock) {
  for (const std::u16string_view literal : {u"q", u"qq", u"abcq", u"a word of some length"}) {
    for (std::size_t at = 0; at + literal.size() <= kLength; ++at) {
      std::u16string text(kLength, literal.front());  // half a match at every place
      text.replace(at, literal.size(), literal);
      const std::size_t first = text.find(literal);
      EXPECT_EQ(findLiteral(text, literal, 0), first) << at;
      EXPECT_EQ(findLiteral(text, literal, at), at);
      EXPECT_EQ(findLiteral(text, literal, at + 1), text.find(literal, at + 1)) << at;
      text.resize(at + literal.size() - 1);
      EXPECT_EQ(findLiteral(text, literal, at), kNotFound) << "its last unit is cut off";
      EXPECT_EQ(findLiteral(text, literal, kLength + 1), kNotFound);
    }
  }
}

}  // namespace
}  // namespace veltramoor
