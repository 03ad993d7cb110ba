// Who may sign in to the demo site.
#pragma once

#include <atomic>
#include <cstdint>
#include <string>
#include <string_view>

namespace veltramoor {

struct DemoAccount {
  std::string_view name;
  std::string_view password;
  /// The account's number, the value of the cookie "uid".
  std::string_view uid;
  /// As the account page shows it, in lower case.
  std::string_view status;
};

/// The accounts and their sessions. Session cookies follow from seed and account, so that a
/// session survives a restart of the site. Thread-safe.
class Accounts {
 public:
  explicit Accounts(std::uint64_t seed) : seed_(seed) {}

  /// Null when name or password is wrong.
  [[nodiscard]] static const DemoAccount* withPassword(std::string_view name,
                                                       std::string_view password);
  /// Null when no account has that session.
  [[nodiscard]] const DemoAccount* withSession(std::string_view session) const;
  [[nodiscard]] std::string sessionOf(const DemoAccount& account) const;
  /// Ends every session there is.
  void expireSessions() { ++generation_; }

 private:
  std::uint64_t seed_;
  std::atomic<std::uint64_t> generation_ = 0;
};

}  // namespace veltramoor
