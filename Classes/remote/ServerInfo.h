// Where the person's BitTorrent client is.
#pragma once

#include <mutex>
#include <optional>
#include <string>

#include "remote/RemoteSettings.h"

namespace veltramoor {

/// The persisted record of the remote client: kind, address, port, credentials. Values are the
/// texts as typed; an unset one is absent. Thread-safe. The password is stored in plain text in the
/// state file, which only its owner can read.
class ServerInfo {
 public:
  ServerInfo() = default;
  ServerInfo(const ServerInfo&) = delete;
  ServerInfo& operator=(const ServerInfo&) = delete;

  /// The one record, read anew from the Preferences store by every call.
  static ServerInfo& sharedInstance();

  /// All five as they are together.
  [[nodiscard]] RemoteSettings settings() const;
  /// Class name of the client kind: "Vuze", "Transmission" or "Utorrent".
  [[nodiscard]] std::optional<std::string> client() const;
  /// Host name or IP address.
  [[nodiscard]] std::optional<std::string> address() const;
  /// TCP port as typed.
  [[nodiscard]] std::optional<std::string> port() const;
  [[nodiscard]] std::optional<std::string> username() const;
  [[nodiscard]] std::optional<std::string> password() const;

  /// Each setter's value is durable when it returns true; false when the store refused it (see
  /// Preferences), and then the record keeps the old one too. Setting an absent value changes only
  /// the record: no key is ever removed from the store.
  bool setClient(std::optional<std::string> value);
  bool setAddress(std::optional<std::string> value);
  bool setPort(std::optional<std::string> value);
  bool setUsername(std::optional<std::string> value);
  bool setPassword(std::optional<std::string> value);

 private:
  using Field = std::optional<std::string>;
  [[nodiscard]] Field read(const Field& field) const;
  bool write(Field& field, Field value, std::string_view key);
  void reload();

  mutable std::mutex mutex_;
  Field client_;
  Field address_;
  Field port_;
  Field username_;
  Field password_;
};

}  // namespace veltramoor
