// Alert boxes, as the logic asks for them.
#pragma once

#include <functional>
#include <string>
#include <vector>

namespace veltramoor {

struct Alert {
  std::string title;
  std::string message;
  /// At least one; index 0 also closes the alert from the keyboard.
  std::vector<std::string> buttons;
  int tag = 0;
  /// Called on the main thread with the index of the button that closed it; may be empty.
  std::function<void(int buttonIndex)> clicked;
};

/// What can put an alert before the person. The shell implements it; main thread only.
class AlertPresenter {
 public:
  virtual ~AlertPresenter() = default;
  virtual void show(Alert alert) = 0;
};

class Alerts {
 public:
  /// The presenter in use; not owned, null for none. Main thread only.
  static void setPresenter(AlertPresenter* presenter);
  /// Shows an alert through the presenter; without one the alert is dropped. Main thread only.
  static void show(Alert alert);
  /// Shows a title and a message with one button, "Ok" unless named otherwise. Main thread only.
  static void showMessage(std::string title, std::string message, std::string button = "Ok");
  /// The same from a worker thread, which goes on once the alert is shown.
  static void showMessageAndWait(const std::string& title, const std::string& message);
};

}  // namespace veltramoor
