// When and how the person last touched the application.
#pragma once

#include <QObject>
#include <chrono>

namespace veltramoor {

/// Tells what a person does from what a page does by itself. Main thread only.
class InputWatch : public QObject {
  Q_OBJECT
  Q_PROPERTY(bool keys READ keys NOTIFY keysChanged)

 public:
  using Clock = std::chrono::steady_clock;

  /// Watches from the first call on.
  static InputWatch& sharedInstance();

  /// The last press of a key, a button or a finger in a window; the epoch before the first.
  [[nodiscard]] Clock::time_point lastInput() const { return lastInput_; }

  /// Whether the last of these was a key: then the screens show where the focus is.
  [[nodiscard]] bool keys() const { return keys_; }

  bool eventFilter(QObject* receiver, QEvent* event) override;

 signals:
  void keysChanged();

 private:
  friend class SharedInstances;

  InputWatch();
  bool keys_ = false;
  Clock::time_point lastInput_;
};

}  // namespace veltramoor
