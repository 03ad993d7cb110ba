// A list's torrents on their way to the person's computer.
#pragma once

#include <QObject>
#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "platform/OperationQueue.h"
#include "remote/RemoteDiagnosis.h"
#include "shell/overlay/Wait.h"
#include "site/Torrent.h"

namespace veltramoor {

/// Queues sends, counts them, and says so in the overlay that all lists share, for as long as any
/// is under way, or until the person goes on without waiting for them. Main thread only.
class ListSending final : public QObject {
  Q_OBJECT

 public:
  /// The torrent's name; absent after a failed send, with the step at which it failed.
  using Completion = std::function<void(const std::optional<std::string>& name,
                                        const std::optional<DiagnosisStep>& failure)>;

  /// `queue`: what the list's pages are fetched on, so that a send and a fetch never overlap.
  explicit ListSending(OperationQueue& queue);

  /// Queues the send of `torrent`. `completion` must keep this alive.
  void send(const Torrent& torrent, Completion completion);
  /// One of the sends has ended; to be called for each.
  void ended(const std::optional<std::string>& name);

  /// Sends under way.
  [[nodiscard]] int count() const { return count_; }
  /// Whether the person has not gone on from those under way.
  [[nodiscard]] bool isWaitedFor() const { return waits_; }

 signals:
  /// The person goes on; the sends do too.
  void wentOn();
  /// After a torrent of that name has been sent.
  void sent(const std::string& name);
  /// After a send has ended, well or not.
  void finished(bool sent);

 private:
  void show(bool plural);

  OperationQueue& queue_;
  Wait wait_;
  int count_ = 0;
  // Whether the person waits for the sends under way.
  bool waits_ = false;
};

}  // namespace veltramoor
