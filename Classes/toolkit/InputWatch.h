// When the person last touched the application.
#pragma once

#include <QObject>
#include <chrono>

namespace veltramoor {

/// Tells what a person does from what a page does by itself. Main thread only.
class InputWatch : public QObject {
  Q_OBJECT

 public:
  using Clock = std::chrono::steady_clock;

  /// Watches from the first call on.
  static InputWatch& sharedInstance();

  /// The last press of a key, a button or a finger in a window; the epoch before the first.
  [[nodiscard]] Clock::time_point lastInput() const { return lastInput_; }

  bool eventFilter(QObject* receiver, QEvent* event) override;

 private:
  friend class SharedInstances;

  InputWatch();
  Clock::time_point lastInput_;
};

}  // namespace veltramoor
