#include "toolkit/SharedInstances.h"

#include <gtest/gtest.h>

#include <atomic>
#include <stdexcept>
#include <thread>
#include <vector>

namespace veltramoor {
namespace {

struct Inner {
  Inner() { ++made; }
  static inline std::atomic<int> made = 0;
};

struct Outer {
  Outer() { ++made; }
  Inner& inner = SharedInstances::of<Inner>();
  static inline std::atomic<int> made = 0;
};

TEST(SharedInstancesTest, AreMadeOnceWhoeverAsksFirst) {
  std::atomic<int> others = 0;
  {
    std::vector<std::jthread> threads;
    for (int i = 0; i < 10; ++i) {
      threads.emplace_back([&others] {
        Outer& outer = SharedInstances::of<Outer>();
        others += &outer.inner == &SharedInstances::of<Inner>() &&
                          &outer == SharedInstances::pointer<Outer>().get()
                      ? 0
                      : 1;
      });
    }
  }
  EXPECT_EQ(others, 0);
  EXPECT_EQ(Outer::made, 1);
  EXPECT_EQ(Inner::made, 1);
}

TEST(SharedInstancesTest, HaveOneOwner) {
  const Inner* const before = &SharedInstances::of<Inner>();
  EXPECT_THROW(SharedInstances(), std::logic_error);
  EXPECT_EQ(&SharedInstances::of<Inner>(), before);
}

}  // namespace
}  // namespace veltramoor
