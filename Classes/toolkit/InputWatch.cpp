#include "toolkit/InputWatch.h"

#include <QCoreApplication>
#include <QEvent>

#include "toolkit/SharedInstances.h"

namespace veltramoor {

InputWatch& InputWatch::sharedInstance() { return SharedInstances::of<InputWatch>(); }

InputWatch::InputWatch() { QCoreApplication::instance()->installEventFilter(this); }

bool InputWatch::eventFilter(QObject*, QEvent* event) {
  if (event->type() == QEvent::MouseButtonPress || event->type() == QEvent::TouchBegin ||
      event->type() == QEvent::KeyPress) {
    lastInput_ = Clock::now();
    if (keys_ != (event->type() == QEvent::KeyPress)) {
      keys_ = !keys_;
      emit keysChanged();
    }
  }
  return false;
}

}  // namespace veltramoor
