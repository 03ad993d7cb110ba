// Telling the person that something could not be kept.
#pragma once

#include <functional>
#include <optional>
#include <string>

namespace veltramoor {

/// Where those who write the state file (Preferences, CookieStorage) report what the disk refused,
/// and who is told of it: once a problem, not once a write. The same reason is told again only
/// after a write has succeeded in between. One in a process; any thread.
class RefusedWrites {
 public:
  /// Gets a sentence for the person, on the thread whose write was refused and with nothing of this
  /// class locked.
  using Listener = std::function<void(const std::string& sentence)>;

  /// Replaces the listener; null for none. The new one is told of a problem that the former one
  /// knew. Another thread may be within the former one when this returns.
  static void setListener(Listener listener);

  /// A write was refused. `reason` tells one problem from another.
  static void report(const std::string& reason, const std::string& sentence);
  /// A write has succeeded: whatever is refused next is a new problem.
  static void succeeded();

  /// What the listener was told last, if nothing has succeeded since.
  [[nodiscard]] static std::optional<std::string> told();
};

}  // namespace veltramoor
