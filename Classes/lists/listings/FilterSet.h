// All filters of a favourites list, asked together.
#pragma once

#include <atomic>
#include <chrono>
#include <deque>
#include <mutex>
#include <string>
#include <vector>

#include "lists/listings/Filter.h"
#include "site/Torrent.h"

namespace veltramoor {

/// Filters in stored order, and which of them were given up on.
///
/// A hostile filter takes hours over one name, so each has an allowance of time a page; one that
/// needs more accepts nothing from there on, for as long as this set is used. Thread-safe.
class FilterSet {
 public:
  /// For one page: sane filters need 2 ms for 30 names, and a busy machine gets its share.
  static constexpr std::chrono::milliseconds kAllowance{100};

  explicit FilterSet(const std::vector<std::string>& regexes);

  [[nodiscard]] bool empty() const { return filters_.empty(); }
  [[nodiscard]] std::size_t size() const { return filters_.size(); }
  [[nodiscard]] std::vector<std::string> regexes() const;

  /// For each torrent whether any filter accepts it. Every filter is asked for every name, within
  /// its allowance. One page is judged at a time, for a fetch's worker threads would together leave
  /// the screen's no processor; so this waits, and is not for the screen's thread.
  [[nodiscard]] std::vector<bool> accepted(const std::vector<Torrent>& page);
  /// The same at once, and ended after `limit`: what is not answered by then counts as refused, and
  /// no filter is given up on for that.
  [[nodiscard]] std::vector<bool> acceptedWithin(std::chrono::milliseconds limit,
                                                 const std::vector<Torrent>& page);

  /// The texts of the filters that were given up on, and of those that are not valid.
  [[nodiscard]] std::vector<std::string> givenUp() const;
  [[nodiscard]] std::vector<std::string> invalid() const;

 private:
  struct Entry {
    explicit Entry(const std::string& regex) : filter(regex) {}
    Filter filter;
    std::atomic<bool> givenUp{false};
  };
  using Clock = std::chrono::steady_clock;
  std::vector<bool> acceptedUntil(Clock::time_point limit, const std::vector<Torrent>& page);
  /// False when `limit` was what ended it.
  static bool ask(Entry& entry, const std::vector<Torrent>& page, Clock::time_point limit,
                  std::vector<bool>& accepted);

  std::deque<Entry> filters_;
  std::mutex turn_;
};

}  // namespace veltramoor
