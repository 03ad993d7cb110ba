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

void ServerInfo::write(Field& field, Field value, std::string_view key) {
  const std::lock_guard lock(mutex_);
  field = std::move(value);
  if (field) {
    Preferences::sharedInstance().setString(key, *field);
    Preferences::sharedInstance().synchronize();
  }
}

std::optional<std::string> ServerInfo::client() const { return read(client_); }
std::optional<std::string> ServerInfo::address() const { return read(address_); }
std::optional<std::string> ServerInfo::port() const { return read(port_); }
std::optional<std::string> ServerInfo::username() const { return read(username_); }
std::optional<std::string> ServerInfo::password() const { return read(password_); }

void ServerInfo::setClient(Field value) {
  write(client_, std::move(value), PreferencesKeys::serverClient);
}
void ServerInfo::setAddress(Field value) {
  write(address_, std::move(value), PreferencesKeys::serverAddress);
}
void ServerInfo::setPort(Field value) {
  write(port_, std::move(value), PreferencesKeys::serverPort);
}
void ServerInfo::setUsername(Field value) {
  write(username_, std::move(value), PreferencesKeys::serverUser);
}
void ServerInfo::setPassword(Field value) {
  write(password_, std::move(value), PreferencesKeys::serverPassword);
}

}  // namespace veltramoor
