#include "toolkit/InputWatch.h"

#include <QCoreApplication>
#include <QEvent>

namespace veltramoor {

InputWatch& InputWatch::sharedInstance() {
  static InputWatch instance;
  return instance;
}

InputWatch::InputWatch() { QCoreApplication::instance()->installEventFilter(this); }

bool InputWatch::eventFilter(QObject*, QEvent* event) {
  if (event->type() == QEvent::MouseButtonPress || event->type() == QEvent::TouchBegin ||
      event->type() == QEvent::KeyPress) {
    lastInput_ = Clock::now();
  }
  return false;
}

}  // namespace veltramoor
