// The device that screens lay themselves out for.
#pragma once

#include <QObject>
#include <QSizeF>

namespace veltramoor {

/// Screen size and kind of device. On a desktop the "screen" is the application's window, so that a
/// resized window lays out like the device of that size. Main thread only.
class Device : public QObject {
  Q_OBJECT
  Q_PROPERTY(QSizeF screenSize READ screenSize WRITE setScreenSize NOTIFY changed)
  Q_PROPERTY(bool pad READ isPad NOTIFY changed)
  Q_PROPERTY(bool keyboardShown READ isKeyboardShown WRITE setKeyboardShown NOTIFY keyboardChanged)
  Q_PROPERTY(double keyboardCover READ keyboardCover NOTIFY keyboardChanged)
  Q_PROPERTY(bool reducedMotion READ reducedMotion CONSTANT)

 public:
  static Device& sharedInstance();

  /// In points; 320 x 480 until the window is there.
  [[nodiscard]] QSizeF screenSize() const { return screenSize_; }
  void setScreenSize(QSizeF size);
  /// Whether the shorter side has at least 600 points, the width from which two columns of touch
  /// targets fit.
  [[nodiscard]] bool isPad() const;
  /// Whether the person asked for no animations, by VELTRAMOOR_REDUCED_MOTION set to anything but
  /// 0.
  [[nodiscard]] bool reducedMotion() const { return reducedMotion_; }
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
  void keyboardChanged();
  void keyboardWasShown();
  void keyboardWasHidden();

 private:
  friend class SharedInstances;

  Device();
  QSizeF screenSize_{320, 480};
  bool reducedMotion_ = false;
  bool keyboardShown_ = false;
  double keyboardCover_ = 0;
};

}  // namespace veltramoor
