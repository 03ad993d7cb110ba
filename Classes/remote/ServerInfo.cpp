#include "remote/ServerInfo.h"

#include "PreferencesKeys.h"
#include "platform/Preferences.h"

namespace veltramoor {

ServerInfo& ServerInfo::sharedInstance() {
  static ServerInfo instance;
  instance.reload();
  return instance;
}

void ServerInfo::reload() {
  // The store may have to wait for another program, which nobody else is to wait for here.
  const Preferences& preferences = Preferences::sharedInstance();
  RemoteSettings stored{.client = preferences.string(PreferencesKeys::serverClient),
                        .address = preferences.string(PreferencesKeys::serverAddress),
                        .port = preferences.string(PreferencesKeys::serverPort),
                        .username = preferences.string(PreferencesKeys::serverUser),
                        .password = preferences.string(PreferencesKeys::serverPassword)};
  const std::lock_guard lock(mutex_);
  client_ = std::move(stored.client);
  address_ = std::move(stored.address);
  port_ = std::move(stored.port);
  username_ = std::move(stored.username);
  password_ = std::move(stored.password);
}

ServerInfo::Field ServerInfo::read(const Field& field) const {
  const std::lock_guard lock(mutex_);
  return field;
}

bool ServerInfo::write(Field& field, Field value, std::string_view key) {
  if (value && !Preferences::sharedInstance().setString(key, *value)) {
    return false;
  }
  const std::lock_guard lock(mutex_);
  field = std::move(value);
  return true;
}

RemoteSettings ServerInfo::settings() const {
  const std::lock_guard lock(mutex_);
  return {.client = client_,
          .address = address_,
          .port = port_,
          .username = username_,
          .password = password_};
}

std::optional<std::string> ServerInfo::client() const { return read(client_); }
std::optional<std::string> ServerInfo::address() const { return read(address_); }
std::optional<std::string> ServerInfo::port() const { return read(port_); }
std::optional<std::string> ServerInfo::username() const { return read(username_); }
std::optional<std::string> ServerInfo::password() const { return read(password_); }

bool ServerInfo::setClient(Field value) {
  return write(client_, std::move(value), PreferencesKeys::serverClient);
}
bool ServerInfo::setAddress(Field value) {
  return write(address_, std::move(value), PreferencesKeys::serverAddress);
}
bool ServerInfo::setPort(Field value) {
  return write(port_, std::move(value), PreferencesKeys::serverPort);
}
bool ServerInfo::setUsername(Field value) {
  return write(username_, std::move(value), PreferencesKeys::serverUser);
}
bool ServerInfo::setPassword(Field value) {
  return write(password_, std::move(value), PreferencesKeys::serverPassword);
}

}  // namespace veltramoor
