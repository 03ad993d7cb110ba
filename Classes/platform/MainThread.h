// The hop from worker threads to the screen's thread.
#pragma once

#include <functional>

namespace veltramoor {

/// The one thread that owns screens, alerts and preference writes. The shell plugs in its event
/// loop; tests and tools a RunLoop. All functions are thread-safe.
class MainThread {
 public:
  using Task = std::function<void()>;
  /// Runs tasks on the main thread later, in the order posted, never inside the call itself.
  using Poster = std::function<void(Task)>;

  /// Makes the calling thread the main one. Replaces an earlier poster and reopens after `close`.
  /// `drawsWindow`: the poster's event loop draws a window, which stands still whenever a task
  /// waits.
  static void attach(Poster poster, bool drawsWindow = false);
  /// No more tasks: later ones are dropped and waiting `performAndWait` calls return. For closing.
  static void close();

  [[nodiscard]] static bool isCurrent();
  /// Whether the calling thread is the main one and draws a window, from `attach` to `close`.
  [[nodiscard]] static bool isWindowThread();
  /// Queues a task without waiting for it. Tasks run in the order asked for.
  static void perform(Task task);
  /// Queues a task and waits until it has run (at once when already on the main thread). False when
  /// the main thread closed before it ran. What the task throws is thrown here.
  static bool performAndWait(Task task);
};

}  // namespace veltramoor
