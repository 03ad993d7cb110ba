#include "Ratio.h"

#include <fmt/core.h>

#include <algorithm>
#include <chrono>
#include <cstddef>
#include <cstdio>
#include <vector>

namespace veltramoor {
namespace {

using Clock = std::chrono::steady_clock;

double milliseconds(const std::function<void()>& function, int repetitions) {
  const Clock::time_point start = Clock::now();
  for (int i = 0; i < repetitions; ++i) {
    function();
  }
  return std::chrono::duration<double, std::milli>(Clock::now() - start).count() / repetitions;
}

/// How often it must run to take about a millisecond; the first runs warm it up as well.
int repetitionsFor(const std::function<void()>& function) {
  milliseconds(function, 3);
  return static_cast<int>(std::clamp(1.0 / std::max(milliseconds(function, 3), 1e-6), 1.0, 1e4));
}

double median(std::vector<double>& values) {
  const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
  std::nth_element(values.begin(), middle, values.end());
  return *middle;
}

}  // namespace

void Ratios::compare(const std::string& name, double limit, const std::function<void()>& measured,
                     const std::function<void()>& floor, int rounds) {
  const int measuredRepetitions = repetitionsFor(measured);
  const int floorRepetitions = repetitionsFor(floor);
  std::vector<double> measuredMs;
  std::vector<double> floorMs;
  for (int round = 0; round < rounds; ++round) {
    // Which goes first changes, so that no time slice of a busy machine falls into step with one.
    if (round % 2 == 0) {
      measuredMs.push_back(milliseconds(measured, measuredRepetitions));
    }
    floorMs.push_back(milliseconds(floor, floorRepetitions));
    if (round % 2 != 0) {
      measuredMs.push_back(milliseconds(measured, measuredRepetitions));
    }
  }
  report(name, limit, median(measuredMs), median(floorMs));
}

void Ratios::report(const std::string& name, double limit, double measuredMs, double floorMs) {
  const double ratio = measuredMs / floorMs;
  const bool ok = ratio <= limit;  // not for a NaN either
  fmt::print("{}: {:.3f} ms, floor {:.3f} ms, ratio {:.3f} (limit {:.2f}) {}\n", name, measuredMs,
             floorMs, ratio, limit, ok ? "ok" : "TOO SLOW");
  std::fflush(stdout);
  if (!ok) {
    exitCode_ = 1;
  }
}

}  // namespace veltramoor
