// What commands have in common: the main thread, its alerts, the exit statuses, plain lines.
#pragma once

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

  /// Runs the main thread until `begin`'s argument is called with the outcome.
  bool wait(const std::function<void(const std::function<void(bool)>&)>& begin);

 private:
  RunLoop loop_;
  std::optional<std::string> alertText_;
};

/// One line on standard error; returns `status`.
int fail(int status, std::string_view line);

/// `text` without control characters: names from the network must not steer a terminal.
[[nodiscard]] std::string printable(std::string_view text);

/// `value` as text, on one line or indented; what is not UTF-8 in it becomes U+FFFD.
[[nodiscard]] std::string jsonText(const nlohmann::json& value, int indent = -1);

}  // namespace veltramoor::cli
