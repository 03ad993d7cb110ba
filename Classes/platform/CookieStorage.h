// The cookies that all requests share.
#pragma once

#include <cstdint>
#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace veltramoor {

struct Cookie {
  std::string name;
  std::string value;
  /// With a leading dot for a domain cookie, without one for a host-only cookie; case as set.
  std::string domain;
  std::string path = "/";
  /// Unix time in seconds; absent for a session cookie.
  std::optional<std::int64_t> expires = std::nullopt;
  bool secure = false;
  bool httpOnly = false;
};

/// What one answer did to the cookies.
struct CookieChanges {
  /// In the order in which they are stored.
  std::vector<Cookie> set;
  std::vector<Cookie> deleted;
};

/// The cookies of the process, thread-safe. Which of them go with a request, and what an answer
/// sets, is libcurl's to judge: each of its handles is given all of them (see CookieEngine.h).
/// Everything, session cookies included, survives a restart: the listing is kept in the state file
/// (see StateFile.h; mode 0600), written only when it changed and before the request that changed
/// it returns, so that a kill between two requests loses nothing. There are no more than
/// CookieLimits.h says: who comes in over that takes the place of those that were set longest ago.
class CookieStorage {
 public:
  /// Restores the cookies of `stateFile`; absent: in memory only (tests).
  explicit CookieStorage(const std::optional<std::filesystem::path>& stateFile);
  ~CookieStorage();
  CookieStorage(const CookieStorage&) = delete;
  CookieStorage& operator=(const CookieStorage&) = delete;

  /// The store on the application's state file.
  static CookieStorage& sharedInstance();

  /// Unexpired cookies in the order they were first stored; replacing one keeps its place.
  [[nodiscard]] std::vector<Cookie> cookies() const;
  /// Stores or replaces a cookie (same name, domain and path). One that no line can hold (see
  /// CookieLine.h), or whose domain no host can have, is refused.
  void insert(const Cookie& cookie);
  /// Deletes every cookie whose domain equals one of `domains` (without case, leading dot counted)
  /// and, when `name` is given, whose name equals it. Returns how many.
  std::size_t erase(const std::vector<std::string>& domains,
                    std::optional<std::string_view> name = std::nullopt);
  /// Makes `cookie` the only one of its name on `domains`, in one step; next to free when nothing
  /// has changed since it was so last.
  void keepOnly(const std::vector<std::string>& domains, const Cookie& cookie);
  /// Runs `step` with no other thread or request able to read or change the store in between. A
  /// request that is under way goes on with the cookies it began with.
  void atomically(const std::function<void(CookieStorage&)>& step);
  /// Writes the state file when the cookies differ from what it holds. Called after each exchange;
  /// next to free when none of the operations here changed anything. When the disk refuses, or
  /// another program keeps the file locked for longer than `lockPatience` (see StateAccess.h), that
  /// is reported to RefusedWrites, and a later call tries again.
  void saveIfChanged();

  /// Another number after each change.
  [[nodiscard]] std::uint64_t version() const;
  struct Snapshot {
    std::uint64_t version;
    std::vector<Cookie> cookies;
  };
  /// What `cookies` returns, and the version it is of.
  [[nodiscard]] Snapshot snapshot() const;
  /// Makes the changes of an answer. A cookie that libcurl cannot tell from a stored one (see
  /// `engineIdentityOf`) takes its place. Returns the versions before and after.
  std::pair<std::uint64_t, std::uint64_t> apply(const CookieChanges& changes);

 private:
  class Impl;
  std::unique_ptr<Impl> impl_;
};

}  // namespace veltramoor
