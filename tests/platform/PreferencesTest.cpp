#include "platform/Preferences.h"

#include <gtest/gtest.h>
#include <signal.h>
#include <sys/resource.h>

#include <algorithm>
#include <atomic>
#include <filesystem>
#include <fstream>
#include <string>
#include <thread>
#include <vector>

#include "PreferencesKeys.h"
#include "platform/CookieStorage.h"
#include "support/ChildProcess.h"
#include "support/TemporaryFolder.h"

namespace veltramoor {
namespace {

using namespace std::string_literals;
using Strings = std::vector<std::string>;
using test::TemporaryFolder;

TEST(Preferences, ValuesOfEveryKindSurviveReopening) {
  const TemporaryFolder folder;
  const std::string odd = "nul \0, quote ' \" and \xF0\x9F\x98\x80"s;
  {
    Preferences preferences(folder / "state.sqlite");
    EXPECT_EQ(preferences.string(PreferencesKeys::username), std::nullopt);
    EXPECT_EQ(preferences.array(PreferencesKeys::filters), std::nullopt);
    EXPECT_EQ(preferences.number(PreferencesKeys::tab), std::nullopt);
    EXPECT_TRUE(preferences.setString("text", odd));
    EXPECT_TRUE(preferences.setString("empty", ""));
    EXPECT_TRUE(preferences.setNumber("number", -9'007'199'254'740'993));
    EXPECT_TRUE(preferences.setArray("array", {"b", "", "b", odd, "a"}));
    EXPECT_TRUE(preferences.setArray("none", {}));
    EXPECT_TRUE(preferences.setArray("shrunk", {"1", "2", "3"}));
    EXPECT_TRUE(preferences.setArray("shrunk", {"2"}));
    EXPECT_TRUE(preferences.setArray("changed", {"1", "2"}));
    EXPECT_TRUE(preferences.setString("changed", "text"));
    EXPECT_TRUE(preferences.setNumber("back", 1));
    EXPECT_TRUE(preferences.setArray("back", {"x"}));
  }
  const Preferences preferences(folder / "state.sqlite");
  EXPECT_EQ(preferences.string("text"), odd);
  EXPECT_EQ(preferences.string("empty"), "");
  EXPECT_EQ(preferences.number("number"), -9'007'199'254'740'993);
  EXPECT_EQ(preferences.array("array"), (Strings{"b", "", "b", odd, "a"}));
  EXPECT_EQ(preferences.array("none"), Strings{});
  EXPECT_EQ(preferences.array("shrunk"), Strings{"2"});
  EXPECT_EQ(preferences.string("changed"), "text");
  EXPECT_EQ(preferences.array("back"), Strings{"x"});
  // A value of another kind is absent.
  EXPECT_EQ(preferences.string("number"), std::nullopt);
  EXPECT_EQ(preferences.number("text"), std::nullopt);
  EXPECT_EQ(preferences.array("text"), std::nullopt);
  EXPECT_EQ(preferences.array("changed"), std::nullopt);
  EXPECT_EQ(preferences.number("back"), std::nullopt);
  EXPECT_EQ(preferences.lastProblem(), std::nullopt);
}

TEST(Preferences, AnEqualWriteWritesNothing) {
  const TemporaryFolder folder;
  Preferences one(folder / "state.sqlite");
  Preferences other(folder / "state.sqlite");
  const auto journal = folder / "state.sqlite-wal";
  EXPECT_TRUE(one.setString("key", "value") && one.setArray("array", {"a", "b"}) &&
              one.setNumber("number", 7));
  EXPECT_EQ(one.writeCount(), 3U);
  const auto size = std::filesystem::file_size(journal);
  for (Preferences* preferences : {&one, &other}) {
    EXPECT_TRUE(preferences->setString("key", "value") &&
                preferences->setArray("array", {"a", "b"}) && preferences->setNumber("number", 7));
  }
  EXPECT_EQ(one.writeCount(), 3U);
  EXPECT_EQ(other.writeCount(), 0U) << "what the other one stored counts as stored";
  EXPECT_EQ(std::filesystem::file_size(journal), size);
  // A value that only looks the same, or was changed meanwhile, is written.
  EXPECT_TRUE(other.setString("number", "7") && other.setArray("array", {"a,b"}));
  EXPECT_TRUE(one.setNumber("number", 7) && one.setArray("array", {"a", "b"}));
  EXPECT_EQ(other.writeCount(), 2U);
  EXPECT_EQ(one.writeCount(), 5U);
  EXPECT_EQ(other.array("array"), (Strings{"a", "b"}));
}

TEST(Preferences, AnElementIsRemovedWhereItStandsNow) {
  Preferences preferences(std::nullopt);
  struct Case {
    Strings before;
    std::size_t index;
    const char* value;
    Strings after;
  };
  for (const Case& one :
       {Case{{"a", "b", "a"}, 0, "a", {"b", "a"}}, Case{{"a", "b", "a"}, 2, "a", {"a", "b"}},
        // Others have removed, added, or dropped the oldest meanwhile.
        Case{{"a", "b", "a"}, 1, "a", {"b", "a"}},
        Case{{"a", "x", "x", "b", "a"}, 3, "a", {"a", "x", "x", "b"}},
        Case{{"a", "b"}, 7, "a", {"b"}}, Case{{"a", "b"}, 1, "c", {"a", "b"}},
        Case{{}, 0, "a", {}}}) {
    preferences.setArray("array", one.before);
    const auto writes = preferences.writeCount();
    EXPECT_TRUE(preferences.removeFromArray("array", one.index, one.value));
    EXPECT_EQ(preferences.array("array"), one.after);
    EXPECT_EQ(preferences.writeCount() - writes, one.before.size() - one.after.size());
  }
  EXPECT_TRUE(preferences.removeFromArray("none", 0, "a"));
  EXPECT_EQ(preferences.array("none"), std::nullopt);
  for (const std::string value : {"1", "2", "2", "3"}) {
    EXPECT_TRUE(preferences.appendToArray("new", value));
  }
  EXPECT_EQ(preferences.array("new"), (Strings{"1", "2", "2", "3"}));
  EXPECT_TRUE(preferences.appendToArray("new", "4", 2));
  EXPECT_EQ(preferences.array("new"), (Strings{"3", "4"}));
}

TEST(Preferences, AnElementIsPutBackWhereItsPlaceIsNow) {
  Preferences preferences(std::nullopt);
  struct Case {
    Strings before;
    std::size_t index;
    Strings meanwhile;
    Strings after;
  };
  for (const Case& one : {
           Case{{"a", "x", "b"}, 1, {"a", "b"}, {"a", "x", "b"}},
           Case{{"x"}, 0, {}, {"x"}},
           // Others have appended, dropped the oldest, removed a neighbour or both.
           Case{{"a", "x"}, 1, {"a", "c"}, {"a", "x", "c"}},
           Case{{"x", "a"}, 0, {"a", "b"}, {"x", "a", "b"}},
           Case{{"a", "b", "c", "x", "d"}, 3, {"c", "d", "e"}, {"c", "x", "d", "e"}},
           Case{{"a", "b", "x", "c"}, 2, {"b", "d", "c"}, {"b", "d", "x", "c"}},
           Case{{"a", "x", "b", "c"}, 1, {"c", "d", "e", "f", "g"}, {"c", "x", "d", "e", "f", "g"}},
           Case{{"a", "b", "x"}, 2, {}, {"x"}},
           // Neighbours that are there twice.
           Case{{"a", "b", "x", "b", "a", "b"}, 2, {"b", "a", "b", "b"}, {"b", "a", "b", "x", "b"}},
           Case{{"a", "x", "a", "a"}, 1, {"a", "a", "a", "c"}, {"a", "x", "a", "a", "c"}},
           // Six were too many by then; the sixth is the put-back's own, or would be gone anyway.
           Case{{"a", "b", "x"}, 2, {"a", "b", "c", "d", "e", "f"}, {"x", "c", "d", "e", "f"}},
           Case{{"x", "b", "c"}, 0, {"b", "c", "d", "e", "f", "g"}, {"c", "d", "e", "f", "g"}},
       }) {
    SCOPED_TRACE(testing::PrintToString(one.before) + testing::PrintToString(one.meanwhile));
    preferences.setArray("array", one.meanwhile);
    const ArrayPlace place = ArrayPlace::of(one.before, one.index);
    EXPECT_TRUE(preferences.insertIntoArray("array", place, "x",
                                            std::max<std::size_t>(5, one.after.size())));
    EXPECT_EQ(preferences.array("array"), one.after);
  }
}

TEST(Preferences, WhatWasWrittenSurvivesAKill) {
  const TemporaryFolder folder;
  const auto file = folder / "state.sqlite";
  for (int round = 1; round <= 3; ++round) {
    int ends[2];
    ASSERT_EQ(pipe(ends), 0);
    const pid_t child = test::startChild([&] {
      Preferences preferences(file);
      for (std::int64_t i = 0; preferences.setNumber("last", i); ++i) {
        if (write(ends[1], &i, sizeof(i)) != sizeof(i)) {
          return false;
        }
      }
      return false;
    });
    std::int64_t reported = -1;
    while (reported < std::int64_t{15} * round && read(ends[0], &reported, sizeof(reported)) > 0) {
    }
    kill(child, SIGKILL);
    EXPECT_FALSE(test::childSucceeded(child));
    close(ends[1]);
    while (read(ends[0], &reported, sizeof(reported)) > 0) {
    }
    close(ends[0]);
    const Preferences preferences(file);
    EXPECT_GE(preferences.number("last"), reported);
    EXPECT_LE(preferences.number("last"), reported + 1);
    EXPECT_EQ(preferences.lastProblem(), std::nullopt);
  }
}

// A limit on the size of files stands in for a full disk.
TEST(Preferences, ARefusedWriteKeepsTheOldValueAndSaysWhy) {
  const TemporaryFolder folder;
  const auto file = folder / "state.sqlite";
  EXPECT_TRUE(test::childSucceeded(test::startChild([&] {
    signal(SIGXFSZ, SIG_IGN);
    Preferences preferences(file);
    const bool before = preferences.setString("key", "old") && preferences.setArray("array", {"o"});
    const rlimit limit{400'000, RLIM_INFINITY};
    setrlimit(RLIMIT_FSIZE, &limit);
    const bool refused = !preferences.setString("key", std::string(600'000, 'x')) &&
                         !preferences.setArray("array", Strings(60, std::string(10'000, 'y')));
    const auto problem = preferences.lastProblem();
    const bool explained = problem && problem->find("could not be saved") != std::string::npos;
    const bool kept =
        preferences.string("key") == "old" && preferences.array("array") == Strings{"o"};
    // The next write that fits is taken.
    const bool after = preferences.setString("key", "new") && !preferences.lastProblem();
    return before && refused && explained && kept && after;
  })));
  EXPECT_EQ(Preferences(file).string("key"), "new");
}

TEST(Preferences, ADamagedFileIsReported) {
  const TemporaryFolder folder;
  const auto file = folder / "state.sqlite";
  std::ofstream(file) << std::string(600, 'x');
  // Whoever opens it first replaces it, and cookies have nobody to tell.
  const CookieStorage cookies(file);
  Preferences preferences(file);
  ASSERT_TRUE(preferences.lastProblem());
  EXPECT_NE(preferences.lastProblem()->find("state.sqlite.corrupt-"), std::string::npos);
  EXPECT_TRUE(preferences.setString("key", "value"));
  EXPECT_TRUE(preferences.isPersistent());
  EXPECT_TRUE(preferences.lastProblem()) << "what happened at opening stays to be told";
}

TEST(Preferences, ThreadsMayReadWhileOneWrites) {
  Preferences preferences(std::nullopt);
  preferences.setArray("array", Strings(5, "0"));
  std::vector<std::thread> readers;
  std::atomic<int> torn{0};
  for (int i = 0; i < 3; ++i) {
    readers.emplace_back([&] {
      for (int turn = 0; turn < 300; ++turn) {
        const auto array = preferences.array("array");
        torn += array && *array == Strings(5, array->front()) ? 0 : 1;
      }
    });
  }
  for (int i = 0; i < 300; ++i) {
    preferences.setArray("array", Strings(5, std::to_string(i)));
  }
  for (std::thread& reader : readers) {
    reader.join();
  }
  EXPECT_EQ(torn, 0);
  EXPECT_EQ(preferences.writeCount(), 300U) << "the first equals what was there";
}

TEST(Preferences, TheSharedOneIsTheChosenOneElseTheStandardFile) {
  Preferences chosen(std::nullopt);
  Preferences::setSharedInstance(&chosen);
  EXPECT_EQ(&Preferences::sharedInstance(), &chosen);
  Preferences::setSharedInstance(nullptr);
  EXPECT_NE(&Preferences::sharedInstance(), &chosen);
  EXPECT_TRUE(Preferences::sharedInstance().setString("key", "value"));
}

}  // namespace
}  // namespace veltramoor
