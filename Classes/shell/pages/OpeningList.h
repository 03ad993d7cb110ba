// The list that a page was opened from, as its screen knows it.
#pragma once

#include <functional>
#include <optional>
#include <string>

#include "site/Torrent.h"

class QObject;

namespace veltramoor {

/// Main thread only.
class OpeningList {
 public:
  virtual ~OpeningList() = default;

  /// Takes rows and tabs back into use after a page that this list waited for, unless it still
  /// waits for pages of its own.
  virtual void resume() = 0;
  /// What row `row` holds now; absent when there is no such row.
  [[nodiscard]] virtual std::optional<Torrent> torrentAt(int row) const = 0;
  /// Queues the send of `torrent`, which may have left the list.
  virtual void send(const Torrent& torrent) = 0;
  /// Calls `heard` after each send that succeeded, with the torrent's name, for as long as
  /// `receiver` lives.
  virtual void whenSent(QObject* receiver, std::function<void(const std::string& name)> heard) = 0;
};

}  // namespace veltramoor
