#include "Util/GTMNSStringHTMLAdditions.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "Util/Utf.h"

namespace veltramoor {
namespace {

TEST(HtmlEntityTable, HoldsEveryEntityOnceByCodePoint) {
  const std::span<const HtmlEntity> table = htmlEntities();
  ASSERT_EQ(table.size(), 253U);
  EXPECT_TRUE(std::ranges::is_sorted(table, std::less_equal{}, &HtmlEntity::unit));
  std::map<std::string_view, int> units;
  for (const HtmlEntity& entity : table) {
    units[entity.text] = entity.unit;
    EXPECT_TRUE(entity.text.size() >= 4 && entity.text.size() <= 10) << entity.text;
    EXPECT_TRUE(entity.text.front() == '&' && entity.text.back() == ';') << entity.text;
    const std::string character = utf8FromUtf16(std::u16string(1, entity.unit));
    EXPECT_EQ(gtm_stringByUnescapingFromHTML(entity.text), character) << entity.text;
    EXPECT_EQ(gtm_stringByEscapingForAsciiHTML(character), entity.text);
  }
  EXPECT_EQ(units.size(), 253U);
  const std::vector<std::pair<std::string_view, int>> telling{
      {"&quot;", 34},     {"&amp;", 38},    {"&apos;", 39},     {"&lt;", 60},
      {"&gt;", 62},       {"&nbsp;", 160},  {"&Agrave;", 192},  {"&yuml;", 255},
      {"&OElig;", 338},   {"&fnof;", 402},  {"&Alpha;", 913},   {"&thetasym;", 977},
      {"&hellip;", 8230}, {"&euro;", 8364}, {"&forall;", 8704}, {"&lang;", 9001},
      {"&loz;", 9674},    {"&diams;", 9830}};
  for (const auto& [text, unit] : telling) {
    EXPECT_EQ(units[text], unit) << text;
  }
  EXPECT_EQ(table.front().text, "&quot;");
  EXPECT_EQ(table.back().text, "&diams;");
}

TEST(HtmlUnescaping, DecodesEachEntityOnce) {
  const std::vector<std::pair<std::string, std::string>> cases{
      {"", ""},
      {"no entity; here", "no entity; here"},
      {"Tom &amp; Jerry &lt;3&gt;", "Tom & Jerry <3>"},
      {"&amp;lt;", "&lt;"},
      {"&amp;#65;", "&#65;"},
      {"&#65;&#x41;&#X41;&#x0041;&#00065;", "AAAAA"},
      {"&#0;&#65534;&#65535;&#65536;", "&#0;\xEF\xBF\xBE&#65535;&#65536;"},
      {"&#xFFFE;&#xFFFF;&#x0;", "\xEF\xBF\xBE&#xFFFF;&#x0;"},
      {"&#65a;&#x4g;&#;&#x;&#-1;&# 65;&#+65;&#x0x41;",
       "&#65a;&#x4g;&#;&#x;&#-1;&# 65;&#+65;&#x0x41;"},
      {"&thetasym;", "\xCF\x91"},
      {"&#00000065;&thetasymm;", "&#00000065;&thetasymm;"},
      {"&AMP;&Amp;&nosuch;&lt", "&AMP;&Amp;&nosuch;&lt"},
      {"&a;&;&&amp;;", "&a;&;&&;"},
      {"& amp;&am&amp;p;&&lt;", "& amp;&am&p;&<"},
      {"&\xC3\xA9t\xC3\xA9;&eacute;", "&\xC3\xA9t\xC3\xA9;\xC3\xA9"},
      // Halves of a pair, together, apart, alone and in the wrong order.
      {"&#xD83D;&#xDE00;", "\xF0\x9F\x98\x80"},
      {"&#xD83D; &#xDE00;", "\xEF\xBF\xBD \xEF\xBF\xBD"},
      {"&#xD83D;&amp;&#55357;", "\xEF\xBF\xBD&\xEF\xBF\xBD"},
      {"&#xDE00;&#xD83D;", "\xEF\xBF\xBD\xEF\xBF\xBD"}};
  for (const auto& [text, expected] : cases) {
    EXPECT_EQ(gtm_stringByUnescapingFromHTML(text), expected) << text;
  }
}

TEST(HtmlUnescaping, AHostileTextTakesLinearTime) {
  const std::string ampersands(4'000'000, '&');
  EXPECT_EQ(gtm_stringByUnescapingFromHTML(ampersands), ampersands);
}

TEST(HtmlEscaping, TheTablesDifferInWhatStaysLiteral) {
  const std::string text = "<a href=\"x\">\xC3\xA9 & \xD0\x96 \xF0\x9F\x98\x80'\xC2\xA0</a>";
  EXPECT_EQ(
      gtm_stringByEscapingForHTML(text),
      "&lt;a href=&quot;x&quot;&gt;\xC3\xA9 &amp; \xD0\x96 \xF0\x9F\x98\x80&apos;&nbsp;&lt;/a&gt;");
  const std::string ascii = gtm_stringByEscapingForAsciiHTML(text);
  EXPECT_EQ(
      ascii,
      "&lt;a href=&quot;x&quot;&gt;&eacute; &amp; &#1046; &#55357;&#56832;&apos;&nbsp;&lt;/a&gt;");
  EXPECT_EQ(gtm_stringByUnescapingFromHTML(ascii), text);
  EXPECT_EQ(gtm_stringByEscapingHTMLUsingTable("<\xD0\x96>", {}, true), "<&#1046;>");
  EXPECT_TRUE(std::ranges::is_sorted(htmlMarkupEntities(), std::less_equal{}, &HtmlEntity::unit));
}

}  // namespace
}  // namespace veltramoor
