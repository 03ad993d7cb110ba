// What commands have in common: the main thread, its alerts, the exit statuses, plain lines.
#pragma once

#include <chrono>
#include <functional>
#include <nlohmann/json_fwd.hpp>
#include <optional>
#include <string>
#include <string_view>

#include "platform/Alerts.h"
#include "platform/RunLoop.h"

namespace veltramoor::cli {

inline constexpr int kDone = 0;
/// The site or the client refused or could not be reached.
inline constexpr int kRefused = 1;
inline constexpr int kWrongUsage = 2;

/// The main thread and its alerts while a command runs. One in a process.
class Terminal final : public AlertPresenter {
 public:
  Terminal();
  ~Terminal() override;

  /// Keeps the alert's text, to be printed as the command's one line.
  void show(Alert alert) override;
  [[nodiscard]] const std::optional<std::string>& alertText() const { return alertText_; }

  /// How long a person waits without asking what for.
  static constexpr std::chrono::seconds kPatience{3};

  /// Runs the main thread until `begin`'s argument is called with the outcome. When that takes
  /// longer than `kPatience`, says on standard error, once, that `peer` is waited for, unless it is
  /// empty; also where no person watches: a log then tells what held it up.
  bool wait(const std::function<void(const std::function<void(bool)>&)>& begin,
            std::string_view peer = {});

 private:
  RunLoop loop_;
  std::optional<std::string> alertText_;
};

/// One line on standard error, made printable; returns `status`.
int fail(int status, std::string_view line);
/// Says that the state file did not take what a command was to store, and why; returns the exit
/// status.
int failToKeep(std::string_view what = "Nothing was kept. ");
/// A line on standard error for each of `lines`.
void noteLines(std::string_view lines);

/// `text` as `printableLine` makes it, but with the blanks at its ends: names from the network must
/// not steer a terminal.
[[nodiscard]] std::string printable(std::string_view text);

/// `value` as text, on one line or indented; what is not UTF-8 in it becomes U+FFFD.
[[nodiscard]] std::string jsonText(const nlohmann::json& value, int indent = -1);

}  // namespace veltramoor::cli
