// Loopback stand-ins for remote clients that cannot be run in a test.
#pragma once

#include <mutex>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "support/RawServer.h"

namespace veltramoor::test {

/// User name and password that a peer asks for, if any.
using PeerLogin = std::optional<std::pair<std::string, std::string>>;

/// What the peers have in common: a server, a login, and the links that were added.
class RemotePeer {
 public:
  virtual ~RemotePeer() = default;
  RemotePeer(const RemotePeer&) = delete;
  RemotePeer& operator=(const RemotePeer&) = delete;

  [[nodiscard]] std::string port() const;
  [[nodiscard]] const RawServer& server() const { return server_; }
  [[nodiscard]] std::vector<std::string> added() const;

 protected:
  explicit RemotePeer(PeerLogin login);
  /// Must be called first by a subclass's destructor: requests end before its members go.
  void stop() { server_.stop(); }
  void add(std::string link);

 private:
  [[nodiscard]] RawReply reply(const RecordedRequest& request);
  /// A request that has passed the login.
  [[nodiscard]] virtual RawReply answer(const RecordedRequest& request) = 0;

  PeerLogin login_;
  mutable std::mutex mutex_;
  std::vector<std::string> added_;
  RawServer server_;
};

/// uTorrent's Web UI: a token page that sets a cookie; adding needs both, and uses the token up.
class UtorrentPeer final : public RemotePeer {
 public:
  explicit UtorrentPeer(PeerLogin login = std::nullopt) : RemotePeer(std::move(login)) {}
  ~UtorrentPeer() override { stop(); }

 private:
  RawReply answer(const RecordedRequest& request) override;

  std::mutex mutex_;
  int tokens_ = 0;
  std::string token_;
};

/// Vuze with its Web Remote: Transmission's call without a session id; refuses chunked bodies.
class VuzePeer final : public RemotePeer {
 public:
  explicit VuzePeer(PeerLogin login = std::nullopt) : RemotePeer(std::move(login)) {}
  ~VuzePeer() override { stop(); }

 private:
  RawReply answer(const RecordedRequest& request) override;
};

}  // namespace veltramoor::test
