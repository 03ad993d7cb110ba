// Who is signed in.
#pragma once

#include <mutex>
#include <optional>
#include <string>

namespace veltramoor {

/// The process-wide record of the signed-in user. Each field is set and read in one piece from any
/// thread; two fields read one after another may come from two different parses.
class UserInfo {
 public:
  UserInfo() = default;
  UserInfo(const UserInfo&) = delete;
  UserInfo& operator=(const UserInfo&) = delete;

  /// Created empty on first use and never destroyed.
  static UserInfo& sharedInstance();

  /// The name as the site shows it; "Anonymous" when no user is known.
  [[nodiscard]] std::optional<std::string> username() const { return read(username_); }
  void setUsername(std::optional<std::string> text) { write(username_, std::move(text)); }
  /// The account's status, capitalised; "N/A" when no user is known.
  [[nodiscard]] std::optional<std::string> ratio() const { return read(ratio_); }
  void setRatio(std::optional<std::string> text) { write(ratio_, std::move(text)); }
  /// The site's "uid" cookie; absent when no user is known.
  [[nodiscard]] std::optional<std::string> ids() const { return read(ids_); }
  void setIds(std::optional<std::string> text) { write(ids_, std::move(text)); }

 private:
  using Field = std::optional<std::string>;
  [[nodiscard]] Field read(const Field& field) const;
  void write(Field& field, Field value);

  mutable std::mutex mutex_;
  Field username_;
  Field ratio_;
  Field ids_;
};

}  // namespace veltramoor
