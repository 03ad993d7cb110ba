// Which servers a page may ask for anything.
#pragma once

#include <QString>
#include <QStringList>
#include <QUrl>

namespace veltramoor {

/// Hosts as a person writes them: a name or an address, an IPv6 one in brackets, with or without a
/// port and with a path that is of no account here.
struct PageReach {
  /// Reached whatever they are: with a port that one alone, without one the scheme's own.
  QStringList own;
  /// Refused at every port that is not among `own`; "" for none.
  QString refused;
  /// Whether nothing but `own` is reached, as for the page of a server that needs no other.
  bool nothingElse = false;
};

/// Whether a page may send a request to `url`, be it for a frame, a picture, a script's call or a
/// WebSocket. Besides what `reach` says, nothing leads to this machine or the network around it:
/// addresses that are loopback, link-local or private, and names that stand for loopback or that
/// only a local network gives out. What is
/// not sent over a network (data:, blob:) is allowed.
///
/// A name is judged as it is written: one whose server gives out a private address gets through.
[[nodiscard]] bool mayReach(const QUrl& url, const PageReach& reach);

}  // namespace veltramoor
