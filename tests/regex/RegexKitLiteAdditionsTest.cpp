#include "regex/RegexKitLiteAdditions.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <string>
#include <vector>

namespace veltramoor {
namespace {

using Captures = std::vector<std::string>;
using Rows = std::vector<Captures>;

TEST(RegexKitLiteAdditions, FirstMatchHasOneElementMoreThanGroups) {
  EXPECT_EQ(captureComponentsMatchedByRegex("key=value; other=2", "(\\w+)=(\\w+)"),
            (Captures{"key=value", "key", "value"}));
  EXPECT_EQ(captureComponentsMatchedByRegex("ac", "a(b)?(c)"), (Captures{"ac", "", "c"}));
  EXPECT_EQ(captureComponentsMatchedByRegex("xyz", "(a)(b)"), Captures{});
  EXPECT_EQ(captureComponentsMatchedByRegex("", "(a)?"), (Captures{"", ""}));
}

TEST(RegexKitLiteAdditions, AllMatchesGoLeftToRight) {
  EXPECT_EQ(arrayOfCaptureComponentsMatchedByRegex("a1 b22 c", "([a-z])(\\d*)"),
            (Rows{{"a1", "a", "1"}, {"b22", "b", "22"}, {"c", "c", ""}}));
  EXPECT_EQ(arrayOfCaptureComponentsMatchedByRegex("aaaa", "aa"), (Rows{{"aa"}, {"aa"}}));
  EXPECT_EQ(arrayOfCaptureComponentsMatchedByRegex("ab", "x*"), (Rows{{""}, {""}, {""}}));
  // An empty match goes on one whole character further, not into the middle of one.
  EXPECT_EQ(arrayOfCaptureComponentsMatchedByRegex("\U0001F600b", "x*"), (Rows{{""}, {""}, {""}}));
  EXPECT_EQ(arrayOfCaptureComponentsMatchedByRegex("aaba", "\\Ga"), (Rows{{"a"}, {"a"}}));
  EXPECT_EQ(arrayOfCaptureComponentsMatchedByRegex("nothing", "z"), Rows{});
}

TEST(RegexKitLiteAdditions, AnchorsAndDotsFollowTheDefaults) {
  const std::string lines = "one\ntwo";
  EXPECT_TRUE(captureComponentsMatchedByRegex(lines, "e.t").empty());
  EXPECT_EQ(captureComponentsMatchedByRegex(lines, "e[\\s\\S]t"), Captures{"e\nt"});
  EXPECT_TRUE(captureComponentsMatchedByRegex(lines, "^two").empty());
  EXPECT_TRUE(captureComponentsMatchedByRegex(lines, "one$").empty());
  EXPECT_TRUE(captureComponentsMatchedByRegex(lines, "ONE").empty());
  EXPECT_EQ(arrayOfCaptureComponentsMatchedByRegex("<tr><tr", "(?<=>)<tr|^<tr"),
            (Rows{{"<tr"}, {"<tr"}}));
  EXPECT_EQ(arrayOfCaptureComponentsMatchedByRegex("aa", "^a"), Rows{{"a"}});
  // What fails at the start of a line may match further on when it repeats its beginning.
  EXPECT_EQ(captureComponentsMatchedByRegex("abxb", "(.*)x\\1"), (Captures{"bxb", "b"}));
  // A later search still sees what stands before it.
  EXPECT_EQ(arrayOfCaptureComponentsMatchedByRegex("a-aa", "a\\b"), (Rows{{"a"}, {"a"}}));
}

TEST(RegexKitLiteAdditions, OneCaptureOfTheFirstMatch) {
  EXPECT_EQ(stringByMatching("size 7 or 8", "size (\\d)( MB)?", 1), "7");
  EXPECT_EQ(stringByMatching("size 7 or 8", "size (\\d)( MB)?", 2), "");
  EXPECT_EQ(stringByMatching("none", "size (\\d)", 1), std::nullopt);
  EXPECT_THROW((void)stringByMatching("none", "size (\\d)", 2), std::out_of_range);
}

TEST(RegexKitLiteAdditions, ReplacesInPlace) {
  struct Case {
    const char *text, *regex, *replacement, *expected;
    std::size_t count;
  };
  const Case cases[] = {
      {"a<b>c<d>", "<.*?>", "", "ac", 2},
      {"unchanged", "<.*?>", "", "unchanged", 0},
      {"\xC3\xA9 x \xE2\x82\xAC x", "x", "", "\xC3\xA9  \xE2\x82\xAC ", 2},
      {"ab", "(a)(b)", "$2$1", "ba", 1},
      {"ab", "(a)b", "$0$12", "aba2", 1},
      {"abcdefghij", "(a)(b)(c)(d)(e)(f)(g)(h)(i)(j)", "$10-$11-$9", "j-a1-i", 1},
      {"ab", "b", "\\$1\\\\", "a$1\\", 1},
      {"ab", "x*", "-", "-a-b-", 3},
      {"ac", "a(b)?", "[$1]", "[]c", 1},
  };
  for (const Case& c : cases) {
    std::string text = c.text;
    EXPECT_EQ(replaceOccurrencesOfRegex(text, c.regex, c.replacement), c.count) << c.regex;
    EXPECT_EQ(text, c.expected) << c.regex;
  }
  for (const char* unusable : {"$", "$x", "$2"}) {
    std::string text = "ab";
    EXPECT_THROW(replaceOccurrencesOfRegex(text, "(a)", unusable), RegexException) << unusable;
    EXPECT_EQ(text, "ab");
  }
}

TEST(RegexKitLiteAdditions, TextBeyondAsciiComesBackWhole) {
  const std::string text = "n\xC3\xA9 <\xF0\x9F\x98\x80> \xE6\x97\xA5";
  EXPECT_EQ(captureComponentsMatchedByRegex(text, "(.*)<(.)>(.*)"),
            (Captures{text, "n\xC3\xA9 ", "\xF0\x9F\x98\x80", " \xE6\x97\xA5"}));
  // A letter whose UTF-8 holds the byte 0x85 is no line end.
  EXPECT_EQ(captureComponentsMatchedByRegex("a\xC3\x85z", "a.z").size(), 1U);
  EXPECT_EQ(captureComponentsMatchedByRegex("a\xFFz", "a(.)z")[1], "\xEF\xBF\xBD");
  EXPECT_EQ(captureComponentsMatchedByRegex(std::string("a\0z", 3), "a.z")[0].size(), 3U);
}

TEST(RegexKitLiteAdditions, UncompilableExpressionSaysWhere) {
  try {
    (void)captureComponentsMatchedByRegex("text", "a)(b");
    FAIL() << "compiled";
  } catch (const RegexException& e) {
    EXPECT_STREQ(e.name(), "RKLICURegexException");
    EXPECT_STREQ(e.what(), "ICU regular expression error #66310, U_REGEX_MISMATCHED_PAREN.");
    const RegexErrorInfo& info = e.userInfo();
    EXPECT_EQ(info.errorCode, 66310);
    EXPECT_EQ(info.errorName, "U_REGEX_MISMATCHED_PAREN");
    EXPECT_EQ(info.line, 1);
    EXPECT_EQ(info.offset, 2);
    EXPECT_EQ(info.preContext, "a");
    EXPECT_EQ(info.postContext, ")(b");
    EXPECT_EQ(info.regex, "a)(b");
    EXPECT_EQ(info.regexOptions, 0U);
  }
  try {
    std::string text = "text";
    replaceOccurrencesOfRegex(text, "\\N{nope}", "");
    FAIL() << "compiled";
  } catch (const RegexException& e) {
    EXPECT_EQ(e.userInfo().line, -1);
    EXPECT_EQ(e.userInfo().offset, -1);
  }
}

TEST(RegexKitLiteAdditions, FailureWhileMatchingIsAnException) {
  // Each turn of the group takes a frame of ICU's stack of 8 MB.
  const std::string text(1'000'000, 'a');
  try {
    (void)captureComponentsMatchedByRegex(text, "(a|b)*c?");
    FAIL() << "matched";
  } catch (const RegexException& e) {
    EXPECT_STREQ(e.what(), "The ICU library returned an unexpected error code.");
    EXPECT_EQ(e.userInfo().errorName, "U_REGEX_STACK_OVERFLOW");
  }
}

TEST(RegexKitLiteAdditions, TimeLimitLeavesNothingMatched) {
  // Two quick matches, then one that never ends.
  const std::string text = "b b " + std::string(60, 'a') + "!";
  const std::string regex = "b|(a+)+$";
  RegexMatching matching{.timeLimit = std::chrono::milliseconds(30)};
  EXPECT_TRUE(arrayOfCaptureComponentsMatchedByRegex(text, regex, &matching).empty());
  EXPECT_TRUE(matching.timedOut);

  std::string replaced = text;
  EXPECT_EQ(replaceOccurrencesOfRegex(replaced, regex, "", &matching), 0U);
  EXPECT_EQ(replaced, text);
  EXPECT_TRUE(matching.timedOut);

  EXPECT_EQ(stringByMatching("a" + text, "(a+)+$", 1, &matching), std::nullopt);
  EXPECT_TRUE(matching.timedOut);

  EXPECT_EQ(captureComponentsMatchedByRegex(text, regex, &matching), (Captures{"b", ""}));
  EXPECT_FALSE(matching.timedOut);

  // The limit is for all matches of the text together, however short each of them is.
  matching.timeLimit = std::chrono::milliseconds(1);
  EXPECT_TRUE(
      arrayOfCaptureComponentsMatchedByRegex(std::string(500'000, 'a'), "a", &matching).empty());
  EXPECT_TRUE(matching.timedOut);
}

}  // namespace
}  // namespace veltramoor
