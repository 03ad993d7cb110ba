#include "platform/MainThread.h"

#include <atomic>
#include <condition_variable>
#include <cstdint>
#include <exception>
#include <memory>
#include <mutex>
#include <optional>
#include <thread>
#include <utility>

namespace veltramoor {
namespace {

struct State {
  /// Held while posting, so that no poster is in use any more when `close` has returned. Recursive:
  /// a poster may drop its task, and what dies with the task may post in turn.
  std::recursive_mutex posting;
  MainThread::Poster poster;
  /// Raised by `close`, so that waiters see a closing even when the main thread opens again at
  /// once.
  std::uint64_t closings = 0;

  /// Guards every ticket's progress; taken after `posting` where both are.
  std::mutex mutex;
  /// Woken when a waited-for task ends or the main thread closes.
  std::condition_variable changed;
  std::atomic<std::thread::id> thread;
  std::atomic<bool> drawsWindow = false;
};

State& state() {
  static State instance;
  return instance;
}

/// A task that somebody waits for. Held by its copies in the main thread's queue and by the waiter;
/// `progress` is guarded by
/// the state's mutex.
struct Ticket {
  enum class Progress { kWaiting, kRunning, kDone, kAbandoned };

  MainThread::Task task;
  Progress progress = Progress::kWaiting;
  std::exception_ptr failure;
};

/// The queue's share of a ticket: abandons it when the queue throws it away unrun.
class QueuedTicket {
 public:
  explicit QueuedTicket(std::shared_ptr<Ticket> ticket) : ticket_(std::move(ticket)) {}
  ~QueuedTicket() { move(Ticket::Progress::kWaiting, Ticket::Progress::kAbandoned); }
  QueuedTicket(const QueuedTicket&) = delete;
  QueuedTicket& operator=(const QueuedTicket&) = delete;

  void run() {
    if (!move(Ticket::Progress::kWaiting, Ticket::Progress::kRunning)) {
      return;
    }
    try {
      std::exchange(ticket_->task, {})();
    } catch (...) {
      ticket_->failure = std::current_exception();
    }
    move(Ticket::Progress::kRunning, Ticket::Progress::kDone);
  }

 private:
  bool move(Ticket::Progress from, Ticket::Progress to) {
    {
      const std::lock_guard lock(state().mutex);
      if (ticket_->progress != from) {
        return false;
      }
      ticket_->progress = to;
    }
    state().changed.notify_all();
    return true;
  }

  std::shared_ptr<Ticket> ticket_;
};

}  // namespace

void MainThread::attach(Poster poster, bool drawsWindow) {
  const std::lock_guard posting(state().posting);
  state().thread = std::this_thread::get_id();
  state().drawsWindow = drawsWindow;
  state().poster = std::move(poster);
}

void MainThread::close() {
  {
    const std::lock_guard posting(state().posting);
    state().poster = nullptr;
    state().drawsWindow = false;
    const std::lock_guard lock(state().mutex);
    ++state().closings;
  }
  state().changed.notify_all();
}

bool MainThread::isCurrent() { return state().thread.load() == std::this_thread::get_id(); }

bool MainThread::isWindowThread() { return isCurrent() && state().drawsWindow; }

void MainThread::perform(Task task) {
  const std::lock_guard posting(state().posting);
  if (state().poster) {
    state().poster(std::move(task));
  }
}

bool MainThread::performAndWait(Task task) {
  if (isCurrent()) {
    task();
    return true;
  }
  std::uint64_t closings = 0;
  const auto ticket = std::make_shared<Ticket>();
  ticket->task = std::move(task);
  {
    const std::lock_guard posting(state().posting);
    if (!state().poster) {
      return false;
    }
    closings = state().closings;
    state().poster([queued = std::make_shared<QueuedTicket>(ticket)] { queued->run(); });
  }
  std::unique_lock lock(state().mutex);
  state().changed.wait(lock, [&] {
    if (ticket->progress == Ticket::Progress::kWaiting && state().closings != closings) {
      ticket->progress = Ticket::Progress::kAbandoned;
    }
    return ticket->progress == Ticket::Progress::kDone ||
           ticket->progress == Ticket::Progress::kAbandoned;
  });
  const bool done = ticket->progress == Ticket::Progress::kDone;
  lock.unlock();
  if (ticket->failure) {
    std::rethrow_exception(ticket->failure);
  }
  return done;
}

}  // namespace veltramoor
