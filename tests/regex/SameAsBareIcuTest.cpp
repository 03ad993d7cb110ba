// Our shortcuts may never change what matches: the same texts through the operations and through
// ICU alone.
#include <gtest/gtest.h>

#include <array>
#include <random>
#include <string>
#include <vector>

#include "regex/BareIcu.h"
#include "regex/RegexKitLiteAdditions.h"
#include "site/HttpRequestRegExDetails.h"
#include "site/HttpRequestRegExProfileDetails.h"
#include "site/TorrentScraping.h"

namespace veltramoor {
namespace {

class Dice {
 public:
  explicit Dice(std::uint32_t seed) : engine_(seed) {}
  /// From 0 to `sides - 1`; the same on every platform.
  std::size_t roll(std::size_t sides) { return engine_() % sides; }
  bool oneIn(std::size_t sides) { return roll(sides) == 0; }
  template <typename T, std::size_t N>
  const T& of(const T (&choices)[N]) {
    return choices[roll(N)];
  }

 private:
  std::mt19937 engine_;
};

constexpr std::size_t kSamples = 3;

/// An expression and some texts that it probably matches.
struct Sampled {
  std::string regex;
  std::array<std::string, kSamples> samples;
};

std::string filler(Dice& dice) {
  static const char* const pieces[] = {
      "a",  "b",    "c",        "ab", "1", "22", " ",          "\"",           "<t",
      "\n", "\r\n", "\xC2\x85", "x",  "-", "é",  "\U0001F600", "\xE2\x80\xA8", "\xD9\xA3"};
  std::string text;
  for (std::size_t i = dice.roll(5); i > 0; --i) {
    text += dice.of(pieces);
  }
  return text;
}

Sampled randomExpression(Dice& dice, int depth);

Sampled randomAtom(Dice& dice, int depth) {
  struct Fixed {
    const char *regex, *sample;
  };
  static const Fixed fixed[] = {{"a", "a"},     {"b", "b"},
                                {"ab", "ab"},   {"<t", "<t"},
                                {"\"", "\""},   {"\\n", "\n"},
                                {"é", "é"},     {".", "x"},
                                {"\\d", "2"},   {"\\w", "c"},
                                {"[abc]", "b"}, {"[^a]", "\n"},
                                {"^", ""},      {"$", ""},
                                {"\\b", ""},    {"\\s", " "},
                                {"\\.", "."},   {"(?=a)", ""},
                                {"(?<=a)", ""}, {"(?!b)", ""},
                                {"\\S", "-"},   {"[\\s\\S]", "\n"},
                                {"x", "x"},     {"\\1", "a"},
                                {"\\G", ""},    {"\U0001F600", "\U0001F600"}};
  static const char* const gaps[] = {".*",   ".*?",  "[\\s\\S]*?", "[\\s\\S]*", "\\d*?",
                                     "\\d*", "\\w*", ".+?",        "[^\"]*",    ".?"};
  static const char* const open[] = {"(", "(?:", "(", "(?>"};
  const std::size_t kind = dice.roll(depth > 0 ? 10 : 8);
  Sampled result;
  if (kind < 5) {
    const Fixed& chosen = dice.of(fixed);
    result.regex = chosen.regex;
    result.samples.fill(chosen.sample);
  } else if (kind < 8) {
    result.regex = dice.of(gaps);
    for (std::string& sample : result.samples) {
      sample = result.regex.find('d') == 1 ? "22" : result.regex[0] == '.' ? "c-" : filler(dice);
    }
  } else {
    result = randomExpression(dice, depth - 1);
    result.regex = dice.of(open) + result.regex + ")";
  }
  if (dice.oneIn(6) && result.regex.back() != '?' && result.regex.back() != '*') {
    static const char* const quantifiers[] = {"*",  "+",   "?",  "*?",    "+?",
                                              "??", "{2}", "*+", "{0,2}?"};
    const std::string quantifier = dice.of(quantifiers);
    if (kind < 5 && result.regex.size() > 1) {
      result.regex = "(?:" + result.regex + ")";
    }
    result.regex += quantifier;
    for (std::string& sample : result.samples) {
      const std::string once = sample;
      sample += quantifier == "{2}" || dice.oneIn(2) ? once : "";
    }
  }
  return result;
}

Sampled randomExpression(Dice& dice, int depth) {
  Sampled result;
  for (std::size_t parts = 1 + dice.roll(depth == 2 ? 6 : 3); parts > 0; --parts) {
    const Sampled atom = randomAtom(dice, depth);
    const bool alternative = dice.oneIn(12);
    result.regex += (alternative ? "|" : "") + atom.regex;
    for (std::size_t i = 0; i < kSamples; ++i) {
      result.samples[i] =
          alternative && dice.oneIn(2) ? atom.samples[i] : result.samples[i] + atom.samples[i];
    }
  }
  return result;
}

/// Asks both; returns how many matches they agreed on.
std::size_t compared(const std::string& text, const std::string& regex, Dice& dice) {
  // 100,000 of ICU's steps a search; a text on which ICU alone needs more proves nothing.
  static const char* const replacements[] = {"", "-", "[$0]", "\\$$0\\\\"};
  const std::string replacement = dice.of(replacements);
  const BareAnswer bare = askBareIcu(text, regex, replacement, 10);
  if (U_FAILURE(bare.status)) {
    return 0;
  }
  SCOPED_TRACE("expression " + testing::PrintToString(regex) + " on " +
               testing::PrintToString(text));
  RegexMatching matching;
  EXPECT_EQ(arrayOfCaptureComponentsMatchedByRegex(text, regex, &matching), bare.matches);
  EXPECT_FALSE(matching.timedOut);
  const auto first = captureComponentsMatchedByRegex(text, regex);
  EXPECT_EQ(first, bare.matches.empty() ? std::vector<std::string>{} : bare.matches.front());
  const std::size_t group = dice.roll(bare.groupCount + 1);
  EXPECT_EQ(stringByMatching(text, regex, group),
            bare.matches.empty() ? std::nullopt : std::optional(bare.matches.front()[group]));
  std::string replaced = text;
  EXPECT_EQ(replaceOccurrencesOfRegex(replaced, regex, replacement), bare.matches.size());
  EXPECT_EQ(replaced, bare.replaced);
  return bare.matches.size();
}

TEST(SameAsBareIcu, RandomExpressions) {
  Dice dice(20240611);
  std::size_t matches = 0;
  std::size_t textsWithMatches = 0;
  for (int i = 0; i < 8000 && !HasFailure(); ++i) {
    const Sampled expression = randomExpression(dice, 2);
    std::string text;
    for (std::size_t parts = dice.roll(6); parts > 0; --parts) {
      text += filler(dice) + expression.samples[dice.roll(kSamples)];
    }
    const std::size_t found = compared(text, expression.regex, dice);
    matches += found;
    textsWithMatches += found > 0;
  }
  EXPECT_GT(textsWithMatches, 5000U);
  EXPECT_GT(matches, 40000U);
}

TEST(SameAsBareIcu, ExpressionsOfTheApplication) {
  struct Page {
    std::string_view regex;
    std::vector<const char*> pieces;
  };
  const Page pages[] = {
      {kTorrentRowRegex,
       {"<tr>\n",  "<td>",    "<a href=\"", "/browse/",     "30",      "\">T</a>",
        "</td>\n", "<td>",    "<a href=\"", "/torrent/1\"", ">",       "Name",
        "</a>",    "\n",      "<a href=\"", "magnet:?\"",   ">m</a>",  "Uploaded ",
        "11-20",   ", Size ", "1 MB",       ", ",           "</td>\n", "<td",
        ">",       "5",       "</td>\n",    "<td>",         "6</td>",  "</tr>\n"}},
      {kDetailsRegex,
       {"<head>\n", "</head>", "<body>", "<div id=\"detailsframe\">", "\n", "<div>x</div>",
        "<div id=\"comments\">", "c", "</div>", "\n"}},
      {kAccountRegex,
       {"<head>\n", "</head>", "<body>", "<h2><span>Preferences", "</span>\n",
        "<div id=\"foot\">"}},
      {R"(<!-- popunder -->[\s\S]*?</script>)", {"<!-- popunder -->", "\nx", "</script>", "y\n"}},
      {R"re(["'](http://movies\.example/.*?)["'])re",
       {"<a href=", "'", "http://movies.example/", "1", "\"", "\n"}},
      {R"(.*(x264|720p).*)", {"Some.Name", ".", "x264", "720p", "\n", "\r\n"}},
      {R"(.*(S\d+E\d+).*)", {"Show.", "S", "01", "E", "02", " ", "\n"}},
  };
  Dice dice(7);
  std::array<std::size_t, std::size(pages)> matches{};
  for (int i = 0; i < 5000 && !HasFailure(); ++i) {
    const Page& page = dice.of(pages);
    std::string text;
    for (std::size_t copies = 1 + dice.roll(4); copies > 0; --copies) {
      for (const char* piece : page.pieces) {  // now and then one is missing, doubled or foreign
        text += dice.oneIn(40) ? "" : piece;
        text += dice.oneIn(40) ? piece : "";
        text += dice.oneIn(40) ? page.pieces[dice.roll(page.pieces.size())] : "";
        text += dice.oneIn(20) ? filler(dice) : "";
      }
    }
    matches[static_cast<std::size_t>(&page - pages)] +=
        compared(text, std::string(page.regex), dice);
  }
  for (std::size_t i = 0; i < matches.size(); ++i) {
    EXPECT_GT(matches[i], 500U) << pages[i].regex;
  }
}

}  // namespace
}  // namespace veltramoor
