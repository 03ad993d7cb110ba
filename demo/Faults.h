// Ways in which a page of the demo site can go wrong on purpose.
#pragma once

#include <chrono>
#include <cstdint>
#include <map>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>

namespace veltramoor {

enum class FaultKind : std::uint8_t {
  None,          ///< the ordinary answer (after the delay)
  Hang,          ///< no answer until the client gives up
  Close,         ///< the connection ends without an answer
  Reset,         ///< a TCP reset in the middle of the body
  Endless,       ///< a body without an end
  Bomb,          ///< a gzip body of 64 MiB decoded
  RedirectLoop,  ///< 302 to itself
  Headers,       ///< 300 KB of header lines before the ordinary page
  InvalidUtf8,   ///< the ordinary page with bytes that are no UTF-8
  TrFlood,       ///< ten thousand "<tr" and no row
  Big,           ///< 5 MB of ordinary markup and no row
  Error500,      ///< status 500 with a page
  Drip,          ///< the body byte by byte, one each 100 ms
  QuoteMagnet,   ///< two rows with quotes in their magnet links
  OtherLayout,   ///< the page redesigned: nothing on it is where it was
  NoUploaded,    ///< the last three rows lack "Uploaded"
};

/// "hang", "redirect-loop", ... Absent for an unknown name.
[[nodiscard]] std::optional<FaultKind> faultKindNamed(std::string_view name);

struct Fault {
  FaultKind kind = FaultKind::None;
  /// How long the answer is held back first.
  std::chrono::milliseconds delay{0};
  /// How many requests it strikes; 0: all.
  int times = 0;
};

/// The faults in force, by path prefix. Thread-safe.
class Faults {
 public:
  void set(const std::string& prefix, const Fault& fault);
  void clear();
  /// The fault that strikes a request for `path` now; counts it.
  [[nodiscard]] Fault strike(std::string_view path);

 private:
  std::mutex mutex_;
  std::map<std::string, Fault, std::less<>> byPrefix_;
};

}  // namespace veltramoor
