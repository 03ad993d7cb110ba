// The device that screens lay themselves out for.
#pragma once

#include <QObject>
#include <QSizeF>
#include <optional>

namespace veltramoor {

/// Screen size and kind of device. On a desktop the "screen" is the application's window, so that a
/// resized window lays out like the device of that size. Main thread only.
class Device : public QObject {
  Q_OBJECT
  Q_PROPERTY(QSizeF screenSize READ screenSize WRITE setScreenSize NOTIFY changed)
  Q_PROPERTY(bool pad READ isPad NOTIFY changed)
  Q_PROPERTY(bool keyboardShown READ isKeyboardShown WRITE setKeyboardShown NOTIFY keyboardChanged)
  Q_PROPERTY(double keyboardCover READ keyboardCover NOTIFY keyboardChanged)
  Q_PROPERTY(bool reducedMotion READ reducedMotion NOTIFY wishesChanged)
  Q_PROPERTY(double textScale READ textScale NOTIFY wishesChanged)
  Q_PROPERTY(bool highContrast READ highContrast NOTIFY wishesChanged)

 public:
  /// Text grows with the system's factor up to this one: beyond it forms no longer fit a phone.
  static constexpr double kLargestTextScale = 1.5;

  static Device& sharedInstance();

  /// In points; 320 x 480 until the window is there.
  [[nodiscard]] QSizeF screenSize() const { return screenSize_; }
  void setScreenSize(QSizeF size);
  /// Whether the shorter side has at least 600 points, the width from which two columns of touch
  /// targets fit.
  [[nodiscard]] bool isPad() const;
  /// Whether the person asks for no animations. VELTRAMOOR_REDUCED_MOTION, when it is set, counts
  /// in the system's place: 0 for no, anything else for yes.
  [[nodiscard]] bool reducedMotion() const { return reducedMotion_; }
  void setReducedMotion(bool reduced);
  /// What text outside the lists' rows is enlarged by, from 1 to `kLargestTextScale`.
  [[nodiscard]] double textScale() const { return textScale_; }
  /// Keeps to the bounds; what is no number is none.
  void setTextScale(double scale);
  [[nodiscard]] bool highContrast() const { return highContrast_; }
  void setHighContrast(bool high);
  /// Whether an on-screen keyboard covers part of the screen.
  [[nodiscard]] bool isKeyboardShown() const { return keyboardShown_; }
  /// How much of the window's foot it covers, in points: more than 0 where the desktop lays it over
  /// the window rather than making the window lower.
  [[nodiscard]] double keyboardCover() const { return keyboardCover_; }
  void setKeyboardCover(double points);
  /// Reports the keyboard, by `keyboardWasShown` or `keyboardWasHidden`, each time it is told.
  void setKeyboardShown(bool shown);

 signals:
  void changed();
  void wishesChanged();
  void keyboardChanged();
  void keyboardWasShown();
  void keyboardWasHidden();

 private:
  friend class SharedInstances;

  Device();
  QSizeF screenSize_{320, 480};
  const std::optional<bool> reducedMotionOverride_;
  bool reducedMotion_ = false;
  double textScale_ = 1;
  bool highContrast_ = false;
  bool keyboardShown_ = false;
  double keyboardCover_ = 0;
};

}  // namespace veltramoor
