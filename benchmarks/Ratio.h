// Measuring against a floor.
#pragma once

#include <functional>
#include <string>

namespace veltramoor {

/// Two ways measured in the same run and held to a ratio.
///
/// The two take turns, so that a machine that is busy or changes its clock hits both alike, and
/// their medians are compared.
class Ratios {
 public:
  /// Prints `name: X ms, floor Y ms, ratio R (limit L) ok|TOO SLOW`. `rounds` is how often each is
  /// measured; short functions are repeated within a round until it takes a millisecond or so.
  void compare(const std::string& name, double limit, const std::function<void()>& measured,
               const std::function<void()>& floor, int rounds = 101);

  /// For a figure that was measured otherwise, with a floor measured the same way.
  void report(const std::string& name, double limit, double measuredMs, double floorMs);

  /// 0 when every ratio was within its limit, otherwise 1.
  [[nodiscard]] int exitCode() const { return exitCode_; }

 private:
  int exitCode_ = 0;
};

}  // namespace veltramoor
