// The "Sending ..." overlay of one list.
#pragma once

#include <QObject>

namespace veltramoor {

class SendingTorrentIndicator;

/// Counts a list's sends and says so in the overlay that all lists share, for as long as any is
/// under way, or until the person goes on without waiting for them. Main thread only.
class SendingOverlay : public QObject {
  Q_OBJECT

 public:
  /// One more send is under way.
  void begin();
  /// One of them has ended.
  void end();

  [[nodiscard]] int count() const { return count_; }
  /// Whether the person has not gone on from those under way.
  [[nodiscard]] bool isWaitedFor() const { return waits_; }

 signals:
  /// The person goes on; the sends do too.
  void wentOn();

 private:
  void show(bool plural);

  SendingTorrentIndicator* indicator_ = nullptr;
  // The overlay's showing that is ours, unless another list has shown it since.
  int showing_ = 0;
  int count_ = 0;
  // Whether the person waits for the sends under way.
  bool waits_ = false;
};

}  // namespace veltramoor
