// Who is told of a fetch's end.
#pragma once

#include <concepts>
#include <functional>
#include <optional>
#include <type_traits>
#include <utility>

namespace veltramoor {

/// Any callable that takes the outcome, or the outcome and why it is none (absent when it is one).
/// Whoever has no use for the reason need not name it.
template <typename Outcome, typename Failure>
class FetchCompletion {
 public:
  using Reason = std::optional<Failure>;

  FetchCompletion() = default;

  template <typename Callable>
  requires(!std::same_as<std::remove_cvref_t<Callable>, FetchCompletion> &&
           (std::invocable<Callable&, Outcome> || std::invocable<Callable&, Outcome, Reason>))
      FetchCompletion(Callable callable) {  // NOLINT(google-explicit-constructor)
    if constexpr (std::invocable<Callable&, Outcome, Reason>) {
      call_ = std::move(callable);
    } else {
      // Goes through a function of one argument, which knows an empty callable when it sees one.
      if (std::function<void(Outcome)> call(std::move(callable)); call) {
        call_ = [call = std::move(call)](Outcome outcome, const Reason&) {
          call(std::move(outcome));
        };
      }
    }
  }

  explicit operator bool() const { return static_cast<bool>(call_); }

  void operator()(Outcome outcome, Reason reason) { call_(std::move(outcome), std::move(reason)); }

 private:
  std::function<void(Outcome, Reason)> call_;
};

}  // namespace veltramoor
