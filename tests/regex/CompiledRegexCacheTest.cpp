#include "regex/CompiledRegexCache.h"

#include <gtest/gtest.h>

#include <atomic>
#include <string>
#include <thread>
#include <vector>

#include "regex/RegexKitLiteAdditions.h"

namespace veltramoor {
namespace {

TEST(CompiledRegexCache, StaysWithinItsSizeAndKeepsWhatIsUsed) {
  CompiledRegexCache cache(3);
  const auto kept = cache.get("kept").required;
  for (int i = 0; i < 10; ++i) {
    (void)cache.get("other" + std::to_string(i));
    EXPECT_EQ(cache.get("kept").required, kept) << "compiled again";
  }
  EXPECT_EQ(cache.size(), 3U);
  EXPECT_THROW((void)cache.get("("), RegexException);
  EXPECT_EQ(cache.size(), 3U);
  const CompiledRegex inUse = cache.get("kept");
  cache.clear();
  EXPECT_EQ(cache.size(), 0U);
  EXPECT_EQ(inUse.required->literals.size(), 1U);
  EXPECT_NE(cache.get("kept").required, kept);
}

TEST(CompiledRegexCache, ManyThreadsShareExpressions) {
  // Four threads, three shared expressions, some of their own that push others out, and a clearing
  // now and then: 4 x 500 rounds.
  std::atomic<int> wrong = 0;
  std::vector<std::thread> threads;
  for (int t = 0; t < 4; ++t) {
    threads.emplace_back([t, &wrong] {
      for (int i = 0; i < 500; ++i) {
        const std::string number = std::to_string(t * 1000 + i);
        const std::string text = "<td>" + number + "</td>\n<td>x\xC3\xA9</td>";
        wrong += captureComponentsMatchedByRegex(text, "<td>(.*?)</td>")[1] != number;
        wrong += arrayOfCaptureComponentsMatchedByRegex(text, "<td>(.*?)</td>").size() != 2;
        wrong += stringByMatching(text, ".*(" + number + ").*", 1) != number;
        std::string emptied = text;
        wrong += replaceOccurrencesOfRegex(emptied, "<[\\s\\S]*?>", "") != 4;
        if (i % 100 == t) {
          CompiledRegexCache::sharedInstance().clear();
        }
      }
    });
  }
  for (std::thread& thread : threads) {
    thread.join();
  }
  EXPECT_EQ(wrong, 0);
  EXPECT_LE(CompiledRegexCache::sharedInstance().size(), CompiledRegexCache::kCapacity);
}

}  // namespace
}  // namespace veltramoor
