#include "toolkit/SharedInstances.h"

#include <QCoreApplication>
#include <QEvent>
#include <algorithm>
#include <atomic>
#include <stdexcept>

namespace veltramoor {
namespace {

std::atomic<SharedInstances*> owner = nullptr;

}  // namespace

SharedInstances::SharedInstances() {
  SharedInstances* none = nullptr;
  if (QCoreApplication::instance() == nullptr || !owner.compare_exchange_strong(none, this)) {
    throw std::logic_error("one owner of the shared instances, after the application object");
  }
}

SharedInstances::~SharedInstances() {
  // A view that waits to be deleted may still need one of them.
  QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  while (takeLast() != nullptr) {
  }
  owner = nullptr;
}

// Its end is the caller's, without the lock: one that waits for its threads would wait for ever for
// those that ask for another.
std::shared_ptr<void> SharedInstances::takeLast() {
  const std::scoped_lock lock(mutex_);
  isEnding_ = true;
  if (instances_.empty()) {
    return nullptr;
  }
  std::shared_ptr<void> last = std::move(instances_.back().second);
  instances_.pop_back();
  return last;
}

std::shared_ptr<void> SharedInstances::find(std::type_index type, const Make& make) {
  SharedInstances* const shared = owner;
  if (shared == nullptr) {
    throw std::logic_error("nobody owns the shared instances");
  }
  const std::scoped_lock lock(shared->mutex_);
  const auto found = std::ranges::find(shared->instances_, type,
                                       &std::pair<std::type_index, std::shared_ptr<void>>::first);
  if (found != shared->instances_.end()) {
    return found->second;
  }
  if (shared->isEnding_) {
    throw std::logic_error("the shared instances are gone");
  }
  std::shared_ptr<void> made = make();
  shared->instances_.emplace_back(type, made);
  return made;
}

}  // namespace veltramoor
