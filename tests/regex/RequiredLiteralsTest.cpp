#include "regex/RequiredLiterals.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <vector>

#include "Util/Utf.h"
#include "regex/LiteralChain.h"
#include "site/TorrentScraping.h"

namespace veltramoor {
namespace {

/// "lead: gap'literal' ..." with the gaps | for anything, . for one line, # for digits.
std::string described(std::string_view regex) {
  const RequiredLiterals required = requiredLiterals(utf16FromUtf8(regex));
  if (!required.known) {
    return "unknown";
  }
  const char* const leads[] = {"?", "literal", "dots", "all"};
  std::string text = leads[static_cast<int>(required.lead)];
  text += ":";
  for (const RequiredLiteral& literal : required.literals) {
    const char* const gaps[] = {" |", " .", " #"};
    text += gaps[static_cast<int>(literal.before)];
    text += utf8FromUtf16(literal.text);
  }
  return text;
}

TEST(RequiredLiterals, AreReadFromTheExpression) {
  const std::vector<std::pair<const char*, const char*>> cases = {
      {"abc", "literal: |abc"},
      {"a(b(?:c))d", "literal: |abcd"},
      {"(?<name>a)b", "literal: |ab"},
      {"a.b.*c\\w+d", "literal: |a .b .c .d"},
      {"a[\\s\\S]*?b.*?[xyz]c", "literal: |a |b |c"},
      {"/(\\d*?)\"", "literal: |/ #\""},
      {"1\\d*x", "literal: |1 .x"},
      {"x\\d*1", "literal: |x .1"},
      {"x\\d*\u0663", "literal: |x .\u0663"},
      {"x\\d*\U0001D7D8", "literal: |x .\U0001D7D8"},
      {"a\\d*\\d*b", "literal: |a .b"},
      {"abc*d{2,3}e?f", "literal: |ab .f"},
      {"a\U0001F600?b", "literal: |a .b"},
      {"a\\n?b.*c\\nd.*e", "literal: |a |b |c\nd |e"},
      {"a\\.\\/\\\"b", "literal: |a./\"b"},
      {".*(x264).*", "dots: .x264"},
      {".*?[ab]x", "dots: |x"},
      {"(.*)x\\1", "?: .x"},
      {"([\\s\\S]*</head>)", "all: |</head>"},
      {"[\\s\\S]+x", "?: |x"},
      {".*+x", "?: .x"},
      {"\\d+x", "?: #x"},
      {"^a", "?: |a"},
      {"a|b", "?:"},
      {"a(b|c)d(e)?f(?=g)h(?>i)j", "literal: |a |d |f |h |j"},
      {"(a+)+$", "?:"},
      {"(?i)abc", "unknown"},
      {"\\Qa.b\\E", "unknown"},
      {"\\Ga", "unknown"},
      {"a[[:alpha:]]b", "unknown"},
      {"\\x{41}b", "unknown"},
  };
  for (const auto& [regex, expected] : cases) {
    EXPECT_EQ(described(regex), expected) << regex;
  }
}

TEST(RequiredLiterals, OfTheRowExpressionAreAsExactAsTheExpression) {
  EXPECT_EQ(described(kTorrentRowRegex),
            "literal: |<tr |<td |href=\" ./browse/ #\" |<td |href=\" ./torrent/ .\" .> .</a> "
            "|href=\" .magnet .\" |Uploaded  ., Size  ., |<td .> .</td> |<td .> .</td>");
}

TEST(LiteralChain, FindsWhereASearchMayStart) {
  struct Case {
    const char* regex;
    std::u16string_view text;
    std::size_t from;
    std::optional<std::size_t> start;
  };
  const Case cases[] = {
      {"a.*b", u"xxa\nyab", 0, 5},
      {"a.*b", u"a\u0085b", 0, std::nullopt},
      {"a[\\s\\S]*b", u"xa\nb", 0, 1},
      {"a[\\s\\S]*b", u"xa\nb", 2, std::nullopt},
      {"/\\d*\"", u"/1x\" /\u0663\"", 0, 5},  // an Arabic digit is a digit
      {"/\\d*2\"", u"x/12\"", 0, 1},
      {".*x", u"ab\nabx", 0, 3},
      {".*x", u"ab\nabx", 5, 5},
      {"[^q]x", u"ab\nabx", 0, 0},
      {"ab", u"aab", 0, 1},
      {"ab", u"aab", 2, std::nullopt},
      {"ab", u"", 0, std::nullopt},
      {".*", u"", 0, 0},
  };
  for (const Case& c : cases) {
    const RequiredLiterals required = requiredLiterals(utf16FromUtf8(c.regex));
    LiteralChain chain(required, c.text);
    EXPECT_EQ(chain.searchStart(c.from), c.start) << c.regex << " from " << c.from;
  }
}

}  // namespace
}  // namespace veltramoor
