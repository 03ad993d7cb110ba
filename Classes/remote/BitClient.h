// A BitTorrent client on the person's computer.
#pragma once

#include <chrono>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/Url.h"
#include "remote/RemoteSettings.h"
#include "remote/ServerInfo.h"
#include "site/HttpRequest.h"
#include "site/MultipartUpload.h"

namespace veltramoor {

class BitClient;

/// What the registry knows of one kind of client.
struct BitClientClass {
  /// The class name, as it is stored in the preferences.
  std::string_view name;
  /// Position in the picker of client kinds, from 0.
  int index;
  std::string_view defaultPort;
  /// The set-up text of the settings screen.
  std::string_view defaultDescription;
  /// Where a person finds its remote access: "its preferences, Remote".
  std::string_view remotePreferences;
  std::unique_ptr<BitClient> (*create)();
};

/// One send's parameters and the requests that perform it. Confined to the operation that made it.
/// The builders never check their inputs: an absent address or port becomes "(null)" in the URL,
/// which then is none, and the request fails when it is sent.
class BitClient : public MultipartUpload {
 public:
  /// All kinds, in picker order.
  [[nodiscard]] static const std::vector<BitClientClass>& classes();
  /// The kind of that name, or null.
  [[nodiscard]] static const BitClientClass* classNamed(std::string_view name);
  /// Class name for a picker index; "" for any other.
  [[nodiscard]] static std::string getClientByIndex(int index);
  /// A new client of that kind with address, port and credentials filled in; null when no kind, or
  /// none of that name, is chosen. An empty port is the kind's own.
  [[nodiscard]] static std::unique_ptr<BitClient> configured(const RemoteSettings& settings);
  [[nodiscard]] static std::unique_ptr<BitClient> configured(const ServerInfo& info) {
    return configured(info.settings());
  }

  /// Body of a multipart upload of `file`.
  [[nodiscard]] std::string getData() override;
  /// Where uploads go.
  [[nodiscard]] virtual std::optional<Url> getUrl() const;
  /// The client's own web interface.
  [[nodiscard]] virtual std::optional<Url> getWebUrl() const;
  /// Gets the per-session token from the client and keeps it; blocks. The base has none.
  virtual void setSessionId() {}
  /// The request that adds `filename`, not sent yet; the base's is Transmission's "torrent-add".
  [[nodiscard]] virtual HttpRequest getDownload() const;

  /// A harmless request, not sent yet, that every client of this kind answers in its own way: for
  /// finding out why it cannot be used. The base's is Transmission's handshake.
  [[nodiscard]] virtual HttpRequest getProbe() const;
  /// Whether the answer to it, of status 200 to 299 or 409, is one of this kind.
  [[nodiscard]] virtual bool isOwnAnswer(const HttpRequest&) const { return false; }

  std::optional<std::string> address;
  std::optional<std::string> port;
  std::optional<std::string> username;
  std::optional<std::string> password;
  /// What to add: for a magnet link, the whole magnet text.
  std::optional<std::string> filename;
  /// Bytes of a torrent file; absent for a magnet link.
  std::optional<std::string> file;
  /// Form field and content type of the uploaded file, and the texts around its part.
  std::optional<std::string> name;
  std::optional<std::string> fileContentType;
  std::optional<std::string> prefixData;
  std::optional<std::string> postfixData;

  /// By when each request made here must be over; absent: as long as requests take.
  std::optional<std::chrono::steady_clock::time_point> deadline;
  /// Hears how far the connection of each of them comes; empty: nobody asks.
  std::function<void(const ConnectionStage&)> progress;

  /// The request that `setSessionId` made, as it ended; absent for a kind without one.
  [[nodiscard]] const std::optional<HttpRequest>& handshake() const { return handshake_; }
  [[nodiscard]] const std::optional<std::string>& sessionId() const { return sessionId_; }
  void setSessionId(std::optional<std::string> token) { sessionId_ = std::move(token); }

 protected:
  /// "http://" address ":" port and `path`, without the blanks around address and port; no URL when
  /// that is not a valid one.
  [[nodiscard]] std::optional<Url> urlWithPath(std::string_view path) const;
  /// The same with the credentials in it as typed, when there is a user name.
  [[nodiscard]] std::optional<Url> urlWithCredentialsAndPath(std::string_view path) const;

  /// Gives `request` the credentials, the deadline and the listener of this client.
  void prepare(HttpRequest& request) const;
  void setHandshake(HttpRequest request) { handshake_ = std::move(request); }

 private:
  std::optional<HttpRequest> handshake_;
  std::optional<std::string> sessionId_;
};

}  // namespace veltramoor
