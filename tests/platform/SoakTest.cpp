// Several programs that use one state file at once.
#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <fstream>
#include <iostream>
#include <string>
#include <vector>

#include "lists/listings/FilterStore.h"
#include "platform/CookieStorage.h"
#include "platform/Preferences.h"
#include "platform/RefusedWrites.h"
#include "remote/DownloadHistory.h"
#include "support/ChildProcess.h"
#include "support/TemporaryFolder.h"

namespace veltramoor {
namespace {

using Strings = std::vector<std::string>;

constexpr int kFilters = 20;
constexpr int kCookies = 10;

std::chrono::seconds duration() {
  const char* given = getenv("VELTRAMOOR_SOAK_SECONDS");
  return std::chrono::seconds(given != nullptr ? std::atoi(given) : 2);
}

/// Each round adds a filter, a name to the history and a cookie, changes settings, and removes its
/// oldest filter but `kFilters`. Notes how many rounds there were; false when anything was refused.
bool writeAsProgram(const std::filesystem::path& file, const std::string& name) {
  Preferences preferences(file);
  Preferences::setSharedInstance(&preferences);
  CookieStorage cookies(file);
  bool isGood = true;
  RefusedWrites::setListener([&isGood](const std::string& sentence) {
    std::cerr << sentence << std::endl;
    isGood = false;
  });
  int rounds = 0;
  const auto end = std::chrono::steady_clock::now() + duration();
  for (; std::chrono::steady_clock::now() < end; ++rounds) {
    const std::string own = name + std::to_string(rounds);
    const std::string oldest = name + std::to_string(rounds - kFilters);
    isGood = FilterStore::append(own) && DownloadHistory::append(own) && isGood;
    const Strings filters = FilterStore::regexes();
    if (rounds >= kFilters) {
      // Others add and remove before this is done.
      const auto index = std::ranges::find(filters, oldest) - filters.begin();
      isGood = FilterStore::remove(static_cast<std::size_t>(index), oldest) && isGood;
    }
    isGood = preferences.setNumber(name, rounds) && isGood;
    isGood = preferences.setArray("shared", Strings(10, name)) && isGood;
    // Never a mixture of two writers' elements.
    const auto shared = preferences.array("shared");
    isGood = shared && *shared == Strings(10, shared->front()) && isGood;
    cookies.insert({.name = name + std::to_string(rounds % kCookies),
                    .value = std::to_string(rounds),
                    .domain = "a.example"});
    cookies.saveIfChanged();
  }
  std::ofstream(file.string() + name) << rounds;
  return isGood;
}

/// The last `count` of a program's rounds, oldest first.
Strings lastOf(const std::string& name, int rounds, int count) {
  Strings names;
  for (int i = std::max(0, rounds - count); i < rounds; ++i) {
    names.push_back(name + std::to_string(i));
  }
  return names;
}

Strings startingWith(const std::string& name, Strings all) {
  std::erase_if(all, [&](const std::string& one) { return !one.starts_with(name); });
  return all;
}

TEST(SoakTest, ProgramsThatWriteAtOnceLoseNothing) {
  const test::TemporaryFolder folder;
  const auto file = folder / "state.sqlite";
  const Strings programs{"a", "b", "c"};
  test::Gate gate;
  std::vector<pid_t> children;
  for (const std::string& name : programs) {
    children.push_back(test::startChild([&] {
      gate.wait();
      return writeAsProgram(file, name);
    }));
  }
  gate.open();
  for (const pid_t child : children) {
    EXPECT_TRUE(test::childSucceeded(child));
  }
  Preferences preferences(file);
  Preferences::setSharedInstance(&preferences);
  const Strings history = DownloadHistory::names();
  const auto cookies = CookieStorage(file).cookies();
  std::size_t remembered = 0;
  for (const std::string& name : programs) {
    int rounds = 0;
    std::ifstream(file.string() + name) >> rounds;
    ASSERT_GT(rounds, 0);
    RecordProperty("rounds_" + name, rounds);
    EXPECT_EQ(preferences.number(name), rounds - 1);
    EXPECT_EQ(startingWith(name, FilterStore::regexes()), lastOf(name, rounds, kFilters));
    const Strings own = startingWith(name, history);
    EXPECT_EQ(own, lastOf(name, rounds, static_cast<int>(own.size())));
    remembered += own.size();
    for (int i = std::max(0, rounds - kCookies); i < rounds; ++i) {
      EXPECT_EQ(std::ranges::count_if(cookies,
                                      [&](const Cookie& cookie) {
                                        return cookie.name == name + std::to_string(i % kCookies) &&
                                               cookie.value == std::to_string(i);
                                      }),
                1)
          << name << i;
    }
  }
  EXPECT_EQ(remembered, history.size());
  EXPECT_EQ(preferences.lastProblem(), std::nullopt);
  Preferences::setSharedInstance(nullptr);
}

}  // namespace
}  // namespace veltramoor
