// Background page fetches and how they hand over what they found.
#pragma once

#include <exception>
#include <memory>
#include <optional>
#include <utility>

#include "platform/MainThread.h"
#include "platform/OperationQueue.h"
#include "platform/TransferFailure.h"
#include "platform/Url.h"
#include "site/DeliveryOrder.h"
#include "site/FetchCompletion.h"

namespace veltramoor {

/// Place of one operation among the siblings of its batch.
struct DeliveryPlace {
  std::shared_ptr<DeliveryOrder> priorityQueue;
  /// This operation's number, and the one that must be delivered before it.
  int priority = 0;
  int dependPriority = 0;
};

/// Base of the operations that screens queue. A subclass does its blocking work in `fetch` and
/// leaves the outcome in `returnObject_`, and in `failure_` why there is none: by default how the
/// transfer that decides it failed; both are then delivered on the main thread without waiting. The
/// completion must keep its screen alive; it is moved to the main thread with the outcome, so that
/// the screen's last reference is never dropped by a worker.
template <typename Outcome, typename Failure = TransferFailure>
class FetchPage : public Operation {
 public:
  using Completion = FetchCompletion<Outcome, Failure>;

  /// An empty completion: the work is done and nothing is delivered.
  FetchPage(std::optional<Url> url, Completion completion,
            std::optional<DeliveryPlace> place = std::nullopt)
      : url_(std::move(url)), completion_(std::move(completion)), place_(std::move(place)) {}

  void main() final {
    try {
      fetch();
    } catch (const std::exception&) {
      // Whatever went wrong, the screen must hear of an end, or its overlay would stay up and the
      // pages after this one would wait for ever.
      returnObject_ = Outcome{};
    }
    deliver();
  }

  [[nodiscard]] const std::optional<Url>& url() const { return url_; }

 protected:
  /// The work, on a worker thread.
  virtual void fetch() = 0;

  void setUrl(std::optional<Url> url) { url_ = std::move(url); }

  Outcome returnObject_{};
  std::optional<Failure> failure_;

 private:
  void deliver() {
    if (!completion_) {
      return;
    }
    if (place_) {
      place_->priorityQueue->waitUntilDelivered(place_->dependPriority);
    }
    MainThread::perform([completion = std::exchange(completion_, {}),
                         outcome = std::move(returnObject_),
                         failure = std::move(failure_)]() mutable {
      completion(std::move(outcome), std::move(failure));
    });
    if (place_) {
      place_->priorityQueue->markDelivered(place_->priority);
    }
  }

  std::optional<Url> url_;
  Completion completion_;
  std::optional<DeliveryPlace> place_;
};

}  // namespace veltramoor
