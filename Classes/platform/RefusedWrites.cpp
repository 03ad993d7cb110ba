#include "platform/RefusedWrites.h"

#include <memory>
#include <mutex>
#include <utility>

namespace veltramoor {
namespace {

struct Problem {
  std::string reason;
  std::string sentence;
};

struct State {
  std::mutex mutex;
  std::shared_ptr<const RefusedWrites::Listener> listener;
  std::optional<Problem> told;
};

State& state() {
  static State instance;
  return instance;
}

}  // namespace

void RefusedWrites::setListener(Listener listener) {
  auto shared = listener ? std::make_shared<const Listener>(std::move(listener)) : nullptr;
  const std::lock_guard lock(state().mutex);
  state().listener.swap(shared);
  state().told.reset();
}

void RefusedWrites::report(const std::string& reason, const std::string& sentence) {
  std::shared_ptr<const Listener> listener;
  {
    const std::lock_guard lock(state().mutex);
    // Without a listener nobody has been told, so that the next one will be.
    if (state().listener == nullptr || (state().told && state().told->reason == reason)) {
      return;
    }
    state().told = Problem{reason, sentence};
    listener = state().listener;
  }
  (*listener)(sentence);
}

void RefusedWrites::succeeded() {
  const std::lock_guard lock(state().mutex);
  state().told.reset();
}

std::optional<std::string> RefusedWrites::told() {
  const std::lock_guard lock(state().mutex);
  return state().told ? std::optional(state().told->sentence) : std::nullopt;
}

}  // namespace veltramoor
