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
  const std::lock_guard lock(mutex_);
  const Preferences& preferences = Preferences::sharedInstance();
  client_ = preferences.string(PreferencesKeys::serverClient);
  address_ = preferences.string(PreferencesKeys::serverAddress);
  port_ = preferences.string(PreferencesKeys::serverPort);
  username_ = preferences.string(PreferencesKeys::serverUser);
  password_ = preferences.string(PreferencesKeys::serverPassword);
}

ServerInfo::Field ServerInfo::read(const Field& field) const {
  const std::lock_guard lock(mutex_);
  return field;
}

bool ServerInfo::write(Field& field, Field value, std::string_view key) {
  const std::lock_guard lock(mutex_);
  field = std::move(value);
  return !field || Preferences::sharedInstance().setString(key, *field);
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
