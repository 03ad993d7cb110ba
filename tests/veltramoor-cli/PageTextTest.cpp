#include "PageText.h"

#include <gtest/gtest.h>

#include <chrono>
#include <thread>

#include "Terminal.h"
#include "TimeLimit.h"

namespace veltramoor::cli {
namespace {

TEST(PageTextTest, LaysAPageOutAsLines) {
  struct Case {
    const char* html;
    const char* text;
  };
  for (const Case& one : {
           Case{"<title>no</title><p>One&nbsp;&amp; two\n three</p><p>four<br>five</p>",
                "One & two three\n\nfour\nfive"},
           Case{"<ul><li>a</li><li>b <b>c</b></li></ul>", "- a\n- b c"},
           Case{"<table><tr><th>Size</th><td>1 GB</td></tr><tr><td>x<td>y</table>",
                "Size  1 GB\nx  y"},
           Case{"a<script>var x = '<p>no</p>';</script><style>p{}</style>b", "ab"},
           Case{"<pre>1\n\n\n  2</pre>", "1\n\n  2"},
           Case{"<meta charset=\"windows-1251\"><div>\u00e9 \u0416</div>", "\u00e9 \u0416"},
           Case{"<div><div><div>deep</div></div></div><div></div><p>", "deep"},
           Case{"<b>never closed <i>and <p>crossed</b>", "never closed and\n\ncrossed"},
           Case{"", ""},
       }) {
    const PageText page = textOfPage(one.html);
    EXPECT_EQ(page.text, one.text) << one.html;
    EXPECT_FALSE(page.isCut);
  }
}

TEST(PageTextTest, CutsALongPageAtACharacter) {
  std::string html = "<p>x";
  while (html.size() < 2 * kLongestPageText) {
    html += "\u20ac";
  }
  const PageText page = textOfPage(html);
  EXPECT_TRUE(page.isCut);
  EXPECT_LE(page.text.size(), kLongestPageText);
  EXPECT_GT(page.text.size() + 3, kLongestPageText);
  EXPECT_TRUE(page.text.ends_with("\u20ac"));
}

TEST(PageTextTest, TakesPagesOfAnyLengthInPieces) {
  std::string html;
  std::string text;
  for (int i = 0; i < 5000; ++i) {
    html += "<p>\u20ac" + std::to_string(i) + " &amp; <b>m</b>ore</p>\n";
    text += (i > 0 ? "\n\n\u20ac" : "\u20ac") + std::to_string(i) + " & more";
  }
  EXPECT_EQ(textOfPage(html).text, text);
}

TEST(PageTextTest, DeepAndBrokenPagesEnd) {
  std::string deep;
  for (int i = 0; i < 1'000'000; ++i) {
    deep += "<b>";
  }
  for (int i = 0; i < 1'000'000; ++i) {
    deep += "</u>";
  }
  const PageText page = textOfPage("at the top" + deep + "at the bottom");
  EXPECT_EQ(page.text, "at the top");
  EXPECT_TRUE(page.isCut);
  EXPECT_EQ(textOfPage("<p>" + deep.substr(0, 900) + "at the bottom").text, "at the bottom");
  EXPECT_EQ(textOfPage("<p>a\xff\xfe</p><p>&#0;&#x110000;&nosuch;b").text.front(), 'a');
  EXPECT_EQ(textOfPage("<div a=\"never").text, "");
}

TEST(TimeLimitTest, EndsTheProgramThatTakesLonger) {
  EXPECT_EXIT(
      {
        const TimeLimit limit(std::chrono::milliseconds(50), "It takes too long.");
        std::this_thread::sleep_for(std::chrono::minutes(1));
      },
      testing::ExitedWithCode(kRefused), "It takes too long.");
  // One that went in time ends nothing.
  { const TimeLimit limit(std::chrono::hours(1), "It takes too long."); }
}

}  // namespace
}  // namespace veltramoor::cli
