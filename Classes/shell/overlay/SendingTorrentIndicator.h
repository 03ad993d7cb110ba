// The shared "Sending ..." overlay.
#pragma once

#include "shell/overlay/LoadingIndicator.h"

namespace veltramoor {

/// A second indicator beside the loading one, with the same behaviour.
class SendingTorrentIndicator final : public veltramoor::LoadingIndicator {
  Q_OBJECT

 public:
  static SendingTorrentIndicator& sharedInstance();
  static SendingTorrentIndicator& current();

 private:
  friend class SharedInstances;

  SendingTorrentIndicator() = default;
};

}  // namespace veltramoor
