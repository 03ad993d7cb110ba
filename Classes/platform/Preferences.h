// Settings and remembered state by key.
#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/ArrayPlace.h"

namespace veltramoor {

/// The persistent key-value store. Thread-safe; two processes may use one file. Values are UTF-8
/// strings, arrays of strings or whole numbers; no key is ever deleted. A write is durable when it
/// returns, and writing the value already stored costs no disk write. Reading a key with a value of
/// another type answers absent.
class Preferences {
 public:
  static constexpr std::size_t kNoMaximum = SIZE_MAX;
  /// Whether a refusal is reported to RefusedWrites, or the caller tells the person of it.
  enum class Refusal { Reported, LeftToCaller };

  /// Opens `stateFile` (see StateFile.h for what can go wrong); absent: in memory (tests).
  explicit Preferences(const std::optional<std::filesystem::path>& stateFile);
  ~Preferences();
  Preferences(const Preferences&) = delete;
  Preferences& operator=(const Preferences&) = delete;

  /// The store that the application uses: the one given to `setSharedInstance`, else one on
  /// `defaultStateFile()`.
  static Preferences& sharedInstance();
  /// For start-up and tests; call before other threads exist. The object must outlive its use.
  static void setSharedInstance(Preferences* preferences);

  [[nodiscard]] std::optional<std::string> string(std::string_view key) const;
  [[nodiscard]] std::optional<std::vector<std::string>> array(std::string_view key) const;
  [[nodiscard]] std::optional<std::int64_t> number(std::string_view key) const;

  /// Each returns false, leaving the old value, when the disk refuses the write or another program
  /// keeps the file locked (for longer than `lockPatience` of StateAccess.h); the reason is then in
  /// `lastProblem()`, and reported to RefusedWrites. A store that is in memory because its file
  /// could not be had takes its first write and reports that.
  bool setString(std::string_view key, std::string_view value);
  bool setArray(std::string_view key, const std::vector<std::string>& value);
  bool setNumber(std::string_view key, std::int64_t value);
  /// Appends to an array (none counts as empty) and drops the oldest elements over `maximum`, in
  /// one step that no other process's write comes between.
  bool appendToArray(std::string_view key, const std::string& value,
                     std::size_t maximum = kNoMaximum, Refusal refusal = Refusal::Reported);
  /// Removes, in one such step, the element that stood at `index` when `value` was read there: if
  /// the array has changed since, the one of this value that is nearest (the earlier of two), and
  /// nothing, which is no failure, when there is none any more.
  bool removeFromArray(std::string_view key, std::size_t index, const std::string& value);
  /// Inserts, in one such step, an element where `place` is by then (none counts as empty). The
  /// oldest elements over `maximum` go, as they would have gone if it had never been away.
  bool insertIntoArray(std::string_view key, const ArrayPlace& place, const std::string& value,
                       std::size_t maximum = kNoMaximum);

  /// Nothing to do, every write being durable already; kept so that writers can say what they mean.
  void synchronize() {}

  /// Whether values outlive the process: false in memory, also when it took the place of a file
  /// that could not be had.
  [[nodiscard]] bool isPersistent() const;
  /// A sentence for the person about what was wrong with the file at opening.
  [[nodiscard]] std::optional<std::string> openingNotice() const;
  /// The same about the last failed write, else `openingNotice`.
  [[nodiscard]] std::optional<std::string> lastProblem() const;
  /// Values written to disk so far; equal writes do not count.
  [[nodiscard]] std::uint64_t writeCount() const;

 private:
  class Impl;
  std::unique_ptr<Impl> impl_;
};

}  // namespace veltramoor
