#include "PageText.h"

#include <gtest/gtest.h>

namespace veltramoor::cli {
namespace {

TEST(PageTextTest, LaysAPageOutAsLines) {
  struct Case {
    const char* html;
    const char* text;
  };
  for (const Case& one : {
           Case{"<title>no</title><p>One&nbsp;&amp; two\n three</p><p>four<br>five</p>",
                "One\u00a0& two three\n\nfour\nfive"},
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

TEST(PageTextTest, DeepAndBrokenPagesEnd) {
  std::string deep;
  for (int i = 0; i < 200'000; ++i) {
    deep += "<div>";
  }
  EXPECT_EQ(textOfPage(deep + "at the bottom").text.find('<'), std::string::npos);
  EXPECT_EQ(textOfPage("<p>a\xff\xfe</p><p>&#0;&#x110000;&nosuch;b").text.front(), 'a');
  EXPECT_EQ(textOfPage("<div a=\"never").text, "");
}

}  // namespace
}  // namespace veltramoor::cli
