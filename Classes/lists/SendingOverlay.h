// The "Sending ..." overlay of one list.
#pragma once

#include <stop_token>

namespace veltramoor {

class SendingTorrentIndicator;

/// Counts a list's sends and says so, for as long as any is under way, in the overlay that all
/// lists share. Main thread only.
class SendingOverlay {
 public:
  /// One more send: the token by which the person can stop it, together with those before it.
  [[nodiscard]] std::stop_token begin();
  /// One of them has ended.
  void end();

  [[nodiscard]] int count() const { return count_; }

 private:
  void show(bool plural);

  SendingTorrentIndicator* indicator_ = nullptr;
  std::stop_source stop_;
  int count_ = 0;
};

}  // namespace veltramoor
