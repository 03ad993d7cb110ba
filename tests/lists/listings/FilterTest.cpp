// What favourite filters accept, what they cost, and what is said of wrong ones.
#include "lists/listings/Filter.h"

#include <gtest/gtest.h>

#include <random>
#include <string>

#include "lists/listings/FilterSet.h"
#include "lists/listings/FilterStore.h"
#include "platform/Preferences.h"
#include "regex/BareIcu.h"

namespace veltramoor {
namespace {

using namespace std::chrono_literals;

std::vector<Torrent> pageOf(const std::vector<std::string>& names) {
  std::vector<Torrent> page(names.size());
  for (std::size_t i = 0; i < names.size(); ++i) {
    page[i].name = names[i];
  }
  return page;
}

TEST(FilterTest, AcceptsWhatTheExpressionIsFoundIn) {
  struct Case {
    const char* regex;
    const char* name;
    bool accepted;
  };
  for (const Case& one :
       {Case{"abc", "xxabcxx", true}, Case{"abc", "ABC", false}, Case{"x264", "Film.X264-A", false},
        Case{"", "anything", true}, Case{"", "", true}, Case{"a.c", "a\nc", false},
        Case{"abc", "first\nabc", true}, Case{"^abc", "xabc", false},
        Case{"x26[45]|hevc", "Film.hevc", true}, Case{"a)(b", "xaby", true},
        Case{"(?i)abc", "xABCx", true}, Case{"a.b", "a-b", true}, Case{"a\\.b", "a-b", false},
        Case{"\u00e9", "Caf\u00e9", true}, Case{"\xE9", "Caf\u00e9", false},
        Case{"]-#", "x]-#", true}}) {
    const Filter filter(one.regex);
    EXPECT_FALSE(filter.problem()) << one.regex;
    EXPECT_EQ(filter.isAccepted(one.name), one.accepted) << one.regex << " in " << one.name;
  }
}

TEST(FilterTest, SaysWhereAndWhyATextIsNotValid) {
  struct Case {
    const char* regex;
    int offset;
    const char* reason;
  };
  for (const Case& one :
       {Case{"a(b", 3, "A ( is not closed"}, Case{"a\\)[)]b)c", 7, "A ) has no ("},
        Case{"720p **", 6, "cannot stand here"}, Case{"*", 0, "cannot stand here"},
        Case{"\U0001F600\U0001F600*+?*", 6, "cannot stand here"},
        Case{"x\\", 2, "A ( is not closed"}, Case{"[abc", 4, "A [ is not closed"},
        Case{"a{3,2}", 6, "smaller than the first"}, Case{"a{2", 3, "Braces"},
        Case{"[b-a]", 3, "range"}, Case{"(?<=a*)b", 6, "greatest length"},
        Case{"\\p{Zork}", 7, "class of characters"},
        Case{"\\N{nope}", -1, "no character of this name"},
        Case{"one\n**", 5, "cannot stand here"}}) {
    const Filter filter(one.regex);
    ASSERT_TRUE(filter.problem()) << one.regex;
    EXPECT_NE(filter.problem()->reason.find(one.reason), std::string::npos)
        << one.regex << ": " << filter.problem()->reason;
    const auto& offset = filter.problem()->offset;
    EXPECT_EQ(offset ? static_cast<int>(*offset) : -1, one.offset) << one.regex;
    EXPECT_FALSE(filter.isAccepted(one.regex));
    EXPECT_FALSE(filter.isAccepted(""));
  }
}

// Names and filters of few letters, so that matches and near misses are many.
TEST(FilterTest, AcceptsExactlyWhatBareIcuDoes) {
  static const char* const pieces[] = {
      "a", "b",      "ab",   "A",    ".", "-",          "]",        "\n", " ", "\r\n",
      "é", "\uFFFD", "\xC3", "\xA9", "#", "\U0001F600", "\xC2\x85", "0",  "&"};
  static const char* const special[] = {".*", "[ab]", "(a|b)", "\\d", "^", "$", "a+", "\\.", ")("};
  std::minstd_rand random(3);
  const auto text = [&](std::size_t most, bool withSpecial) {
    std::string made;
    for (std::size_t i = random() % (most + 1); i > 0; --i) {
      made += withSpecial && random() % 4 == 0 ? special[random() % std::size(special)]
                                               : pieces[random() % std::size(pieces)];
    }
    return made;
  };
  int accepted = 0;
  int refused = 0;
  for (int i = 0; i < 20'000; ++i) {
    const std::string regex = text(3, i % 2 == 0);
    const std::string name = text(12, false);
    const Filter filter(regex);
    const BareAnswer bare = askBareIcu(name, ".*(" + regex + ").*", "", 100'000);
    ASSERT_EQ(filter.isAccepted(name), U_SUCCESS(bare.status) && !bare.matches.empty())
        << testing::PrintToString(regex) << " in " << testing::PrintToString(name);
    ASSERT_EQ(filter.problem().has_value(), U_FAILURE(bare.status));
    ++(filter.isAccepted(name) ? accepted : refused);
  }
  EXPECT_GT(accepted, 3000);
  EXPECT_GT(refused, 3000);
}

TEST(FilterSetTest, KeepsWhatAnyFilterAcceptsAndGivesUpOnHostileOnes) {
  const std::string tempting(60, 'a');
  const std::vector<Torrent> page =
      pageOf({"one x264", tempting + "!", "two hevc", tempting + "! hevc", "three", "x264 hevc"});
  const std::vector<bool> wanted{true, false, true, true, false, true};
  FilterSet filters({"x264", "(a+)+$", "hevc", "(", "(a|a)+[?]$"});
  const auto start = std::chrono::steady_clock::now();
  EXPECT_EQ(filters.accepted(page), wanted);
  EXPECT_EQ(filters.givenUp(), (std::vector<std::string>{"(a+)+$", "(a|a)+[?]$"}));
  EXPECT_EQ(filters.invalid(), std::vector<std::string>{"("});
  for (int repeated = 0; repeated < 100; ++repeated) {
    EXPECT_EQ(filters.accepted(page), wanted) << "and they are not asked again";
  }
  EXPECT_LT(std::chrono::steady_clock::now() - start, 5s);

  EXPECT_EQ(FilterSet({}).accepted(page), std::vector<bool>(page.size()));
  FilterSet held({"(a+)+$", "hevc"});
  EXPECT_EQ(held.acceptedWithin(5ms, page), std::vector<bool>(page.size())) << "the time was up";
  EXPECT_TRUE(held.givenUp().empty()) << "which is not the filter's fault";
}

TEST(FilterStoreTest, KeepsOrderDuplicatesAndEmptyTexts) {
  Preferences store{std::nullopt};
  Preferences::setSharedInstance(&store);
  EXPECT_TRUE(FilterStore::regexes().empty());
  for (const char* regex : {"b", " a ", "", "b"}) {
    EXPECT_TRUE(FilterStore::append(regex));
  }
  EXPECT_TRUE(FilterStore::remove(0, "b"));
  EXPECT_EQ(store.array("Veltramoor_filters"), (std::vector<std::string>{" a ", "", "b"}));
  // Read before that, the last one was the fourth, and " a " another than the first.
  EXPECT_TRUE(FilterStore::remove(3, "b"));
  EXPECT_TRUE(FilterStore::remove(0, "c"));
  EXPECT_EQ(store.array("Veltramoor_filters"), (std::vector<std::string>{" a ", ""}));
  Preferences::setSharedInstance(nullptr);
}

}  // namespace
}  // namespace veltramoor
