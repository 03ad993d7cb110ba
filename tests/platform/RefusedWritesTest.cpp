// What the person is told when nothing can be kept, and how long anybody waits before that.
#include "platform/RefusedWrites.h"

#include <SQLiteCpp/SQLiteCpp.h>
#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <fstream>
#include <string>
#include <thread>
#include <vector>

#include "platform/CookieStorage.h"
#include "platform/MainThread.h"
#include "platform/Preferences.h"
#include "support/Cookies.h"
#include "support/FullDisk.h"
#include "support/TemporaryFolder.h"

namespace veltramoor {
namespace {

using namespace std::chrono_literals;
using Strings = std::vector<std::string>;
using test::FullDisk;

class RefusedWritesTest : public testing::Test {
 protected:
  RefusedWritesTest() {
    RefusedWrites::setListener([this](const std::string& sentence) { told_.push_back(sentence); });
  }
  ~RefusedWritesTest() override { RefusedWrites::setListener(nullptr); }

  const test::TemporaryFolder folder_;
  const std::filesystem::path file_ = folder_ / "state.sqlite";
  Strings told_;
};

/// This thread draws a window while one of these lives.
class Window {
 public:
  Window() {
    MainThread::attach([](const MainThread::Task&) {}, true);
  }
  ~Window() { MainThread::close(); }
  Window(const Window&) = delete;
  Window& operator=(const Window&) = delete;
};

/// Another program in the middle of a write.
class Writer {
 public:
  explicit Writer(const std::filesystem::path& file)
      : database_(file.string(), SQLite::OPEN_READWRITE) {
    database_.exec("BEGIN IMMEDIATE");
  }
  void end() { database_.exec("COMMIT"); }

 private:
  SQLite::Database database_;
};

void change(CookieStorage& cookies, const std::string& value) {
  cookies.insert({.name = "a", .value = value, .domain = "a.example"});
  cookies.saveIfChanged();
}

TEST_F(RefusedWritesTest, AProblemIsToldOnceUntilAWriteSucceedsOrItIsAnother) {
  Preferences preferences(file_);
  CookieStorage cookies(file_);
  EXPECT_TRUE(preferences.setString("text", "old") && preferences.setArray("array", {"old"}));
  {
    const FullDisk fullDisk;
    const auto caller = Preferences::Refusal::LeftToCaller;
    EXPECT_FALSE(preferences.appendToArray("array", "new", 5, caller));
    EXPECT_TRUE(told_.empty()) << "the caller says it";
    EXPECT_FALSE(preferences.setString("text", "new"));
    EXPECT_FALSE(preferences.setNumber("text", 5));
    EXPECT_FALSE(preferences.setArray("array", {"new"}));
    EXPECT_FALSE(preferences.appendToArray("array", "new"));
    EXPECT_FALSE(preferences.removeFromArray("array", 0, "old"));
    change(cookies, "1");
    EXPECT_EQ(told_, Strings{preferences.lastProblem().value_or("")});
    EXPECT_TRUE(preferences.setString("text", "old")) << "nothing to write";
    EXPECT_EQ(Strings{RefusedWrites::told().value_or("")}, told_);
    EXPECT_EQ(preferences.string("text"), "old");
    EXPECT_EQ(preferences.array("array"), Strings{"old"});
    // Another problem, with the first one still there.
    const Window window;
    const Writer writer(file_);
    EXPECT_FALSE(preferences.setString("text", "new"));
    EXPECT_FALSE(preferences.setString("text", "newer"));
    ASSERT_EQ(told_.size(), 2U);
    EXPECT_NE(told_[1].find("another program"), std::string::npos) << told_[1];
  }
  EXPECT_TRUE(preferences.setString("text", "new"));
  EXPECT_EQ(RefusedWrites::told(), std::nullopt);
  {
    const FullDisk fullDisk;
    change(cookies, "2");
    EXPECT_FALSE(preferences.setString("text", "newer"));
  }
  ASSERT_EQ(told_.size(), 3U);
  EXPECT_NE(told_[2].find("sign in again"), std::string::npos) << told_[2];
  change(cookies, "3");
  EXPECT_EQ(test::listing(CookieStorage(file_)), "a.example/ a=3\n");
  EXPECT_EQ(told_.size(), 3U);
}

TEST_F(RefusedWritesTest, MemoryInTheFilesPlaceIsToldAtItsFirstWrite) {
  std::ofstream(folder_ / "plain") << "no folder";
  Preferences preferences(folder_ / "plain" / "state.sqlite");
  CookieStorage cookies(folder_ / "plain" / "state.sqlite");
  EXPECT_EQ(preferences.string("text"), std::nullopt);
  EXPECT_TRUE(told_.empty());
  EXPECT_TRUE(preferences.setString("text", "a") && preferences.setString("text", "b"));
  change(cookies, "1");
  change(cookies, "2");
  EXPECT_EQ(told_, Strings{preferences.openingNotice().value_or("")});
  EXPECT_EQ(preferences.string("text"), "b");
  Preferences none(std::nullopt);
  EXPECT_TRUE(none.setString("text", "a"));
  EXPECT_EQ(told_.size(), 1U);
}

// The lock is given back only when the window's thread has its answers: were they waited for, it
// would be for five seconds each.
TEST_F(RefusedWritesTest, TheWindowDoesNotWaitForAnotherProgramAndOthersDo) {
  Preferences preferences(file_);
  CookieStorage cookies(file_);
  EXPECT_TRUE(preferences.setString("text", "old"));
  Writer writer(file_);
  bool isKept = false;
  std::thread worker([&] { isKept = preferences.setString("worker", "w"); });
  std::thread saver([&] { change(cookies, "saved"); });
  while (cookies.cookies().empty()) {
    std::this_thread::sleep_for(1ms);
  }
  {
    const Window window;
    const auto start = std::chrono::steady_clock::now();
    EXPECT_FALSE(preferences.setString("text", "new"));
    EXPECT_EQ(preferences.string("text"), "old");
    for (int i = 0; i < 20; ++i) {
      change(cookies, "later");
      change(cookies, "later still");
    }
    EXPECT_LT(std::chrono::steady_clock::now() - start, 1s);
  }
  EXPECT_EQ(told_.size(), 1U);
  writer.end();
  worker.join();
  saver.join();
  EXPECT_TRUE(isKept);
  EXPECT_EQ(preferences.string("worker"), "w");
  EXPECT_EQ(test::listing(CookieStorage(file_)), "a.example/ a=later still\n");
}

// Four threads, a thousand reports each of the same two problems in turn.
TEST_F(RefusedWritesTest, ThreadsMayReportWhileTheListenerChanges) {
  std::atomic<int> told = 0;
  RefusedWrites::setListener([&](const std::string&) { ++told; });
  {
    std::vector<std::jthread> threads;
    for (int i = 0; i < 4; ++i) {
      threads.emplace_back([] {
        for (int turn = 0; turn < 1000; ++turn) {
          RefusedWrites::report("full", "The disk is full.");
        }
      });
    }
  }
  EXPECT_EQ(told, 1);
  {
    std::vector<std::jthread> threads;
    for (int i = 0; i < 4; ++i) {
      threads.emplace_back([&] {
        RefusedWrites::setListener([&](const std::string&) { ++told; });
        RefusedWrites::report("full", "The disk is full.");
        RefusedWrites::succeeded();
      });
    }
  }
  EXPECT_GE(told, 2);
  EXPECT_LE(told, 5);
  EXPECT_EQ(RefusedWrites::told(), std::nullopt);
}

}  // namespace
}  // namespace veltramoor
